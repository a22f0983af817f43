#include "corvane/bridge/agent_event_coding.h"

namespace corvane {

void JsonCoding<AgentEvent>::encode(const AgentEvent& event, JsonWriter& writer) {
  const std::string_view name = agentEventNames[event.value().index()];
  writer.beginObject();
  std::visit([&](const auto& value) { json_detail::encodeMember(name, value, writer); }, event.value());
  writer.endObject();
}

DecodingError JsonCoding<AgentEvent>::wrongNumberOfKeys() {
  return {DecodingError::Kind::typeMismatch, "AgentEvent", {}, "Invalid number of keys found, expected one."};
}

}  // namespace corvane
