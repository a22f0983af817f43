#include "corvane/bridge/agent_event_coding.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane {

namespace {

using CaseDecoder = AgentEvent (*)(JsonView);

template <std::size_t... Indexes>
constexpr auto makeCaseDecoders(std::index_sequence<Indexes...>) {
  return std::array<CaseDecoder, sizeof...(Indexes)>{[](JsonView value) {
    return AgentEvent(JsonCoding<std::variant_alternative_t<Indexes, AgentEvent::Value>>::decode(value));
  }...};
}

constexpr auto caseDecoders = makeCaseDecoders(std::make_index_sequence<agentEventNames.size()>{});

struct FoundCase {
  std::size_t index;
  JsonView value;
};

/// The one case that an object names; none where it names no case or several.
std::optional<FoundCase> findOnlyCase(JsonView object) {
  std::optional<FoundCase> found;
  for (const JsonView::Member member : object.members()) {
    const auto* const name = std::ranges::find(agentEventNames, member.key);
    if (name == agentEventNames.end()) continue;
    const auto index = static_cast<std::size_t>(name - agentEventNames.begin());
    if (found && found->index != index) return std::nullopt;
    found = FoundCase{index, member.value};
  }
  return found;
}

}  // namespace

AgentEvent JsonCoding<AgentEvent>::decode(JsonView value) {
  if (!value.isObject()) throw json_detail::typeMismatch("Object", value);
  const auto found = findOnlyCase(value);
  if (!found) {
    throw DecodingError(DecodingError::Kind::typeMismatch, "AgentEvent", {},
                        "Invalid number of keys found, expected one.");
  }
  return json_detail::atMember(agentEventNames[found->index], [&] { return caseDecoders[found->index](found->value); });
}

void JsonCoding<AgentEvent>::encode(const AgentEvent& event, JsonWriter& writer) {
  const std::string_view name = agentEventNames[event.value().index()];
  writer.beginObject();
  writer.key(name);
  json_detail::atMember(name, [&] {
    std::visit([&]<class Case>(const Case& value) { JsonCoding<Case>::encode(value, writer); }, event.value());
  });
  writer.endObject();
}

}  // namespace corvane
