// A whole call without a web engine, the floating window, and then every request to the page with everything that can
// go wrong. The framework runs on virtual time, with a simulated agent tool page.
#include <chrono>
#include <cstdio>

#include "corvane/corvane.h"
#include "corvane/platform/headless/headless_backend.h"
#include "corvane/simulation/simulated_agent_tool.h"
#include "demo/headless/floating_transcript.h"
#include "demo/headless/request_tour.h"
#include "demo/shop/event_printer.h"

namespace {

using namespace corvane;

bool tourCall() {
  const auto backend = headless::Backend::install().value();
  backend->setCaptureAuthorization(AVMediaType::video, AVAuthorizationStatus::authorized);
  backend->setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::authorized);

  const auto view = VelnorAgentView::create(Region::custom("https://agent-tool.example.com/#tour"), "shop-42", true);
  const auto page = simulation::SimulatedAgentTool::attach(view);
  bool hasEnded = false;
  view->setEventHandler([&](const AgentEvent& event) {
    demo::printEvent(event, *view);
    const auto* update = event.getIf<AgentEvent::CallStatusUpdate>();
    hasEnded = hasEnded || (update != nullptr && update->status == CallSessionStatus::disconnected);
  });
  view->loadBooking("booking-7");
  backend->runLoop().advance(std::chrono::seconds(30));
  std::puts(hasEnded ? "The call has ended." : "The call has not ended.");
  return hasEnded;
}

}  // namespace

int main() {
  const bool hasCallEnded = tourCall();
  std::puts("\nThe floating window in a window of 390 x 844, with the seconds that pass on the virtual clock:");
  const bool hasFloated = demo::showFloatingWindow();
  std::puts("\nWhat a host app can ask of the page, with the seconds that pass on the virtual clock:");
  const bool isAsExpected = demo::tourRequests();
  std::puts(isAsExpected ? "\nEvery request ended as expected." : "\nSome request did not end as expected.");
  return hasCallEnded && hasFloated && isAsExpected ? 0 : 1;
}
