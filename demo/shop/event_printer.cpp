#include "demo/shop/event_printer.h"

#include <cstdio>
#include <string>

namespace corvane::demo {

void printEvent(const AgentEvent& event, const VelnorAgentView& view) {
  std::string line = encodeJson(event);
  if (event.is<AgentEvent::CallStatusUpdate>() || event.is<AgentEvent::ClientLocale>()) {
    line.append("   [").append(rawValue(view.callSessionStatus()));
    line.append(", customer ").append(view.clientLocale().value_or("unknown")).append("]");
  }
  if (event.is<AgentEvent::Error>() && view.error()) line.append("   [").append(view.error()->description).append("]");
  std::puts(line.c_str());
  std::fflush(stdout);
}

}  // namespace corvane::demo
