/// The JSON form of events.
#pragma once

#include <algorithm>
#include <array>
#include <concepts>
#include <cstddef>
#include <optional>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>

#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/product_cart_status_coding.h"
#include "corvane/platform/foundation/json_coder.h"

namespace corvane {

/// The names of the cases, in the order of `AgentEvent::Value`.
inline constexpr auto agentEventNames = []<class... Case>(std::type_identity<std::variant<Case...>>) {
  return std::array{Case::name...};
}(std::type_identity<AgentEvent::Value>{});

/// Cases without values are written as empty objects.
template <class Case>
  requires std::is_empty_v<Case> && std::constructible_from<AgentEvent::Value, Case>
struct JsonFields<Case> {
  static constexpr auto fields = std::tuple{};
};
template <class Case>
  requires requires { Case::member; } && std::constructible_from<AgentEvent::Value, Case>
struct JsonFields<Case> {
  static constexpr auto fields = std::tuple{required(Case::member.first, Case::member.second)};
};

template <>
struct JsonCoding<AgentEvent> {
  template <class Source>
  static AgentEvent decode(Source value) {
    if (!value.isObject()) throw json_detail::typeMismatch("Object", value.kind());
    const auto [index, content] = findOnlyCase(value);
    return json_detail::at(agentEventNames[index], [&] {
      return decodeCase(index, content, std::make_index_sequence<agentEventNames.size()>{});
    });
  }
  static void encode(const AgentEvent& event, JsonWriter& writer);

 private:
  /// The one case that an object names.
  template <class Source>
  static std::pair<std::size_t, Source> findOnlyCase(Source object) {
    std::optional<std::pair<std::size_t, Source>> found;
    for (const auto member : object.members()) {
      const auto* const name = std::ranges::find(agentEventNames, member.key);
      if (name == agentEventNames.end()) continue;
      const auto index = static_cast<std::size_t>(name - agentEventNames.begin());
      if (found && found->first != index) throw wrongNumberOfKeys();
      found.emplace(index, member.value);
    }
    if (!found) throw wrongNumberOfKeys();
    return *found;
  }

  template <class Source, std::size_t... indexes>
  static AgentEvent decodeCase(std::size_t index, Source value, std::index_sequence<indexes...>) {
    using Decode = AgentEvent (*)(Source);
    static constexpr std::array<Decode, sizeof...(indexes)> decoders{[](Source content) {
      return AgentEvent(JsonCoding<std::variant_alternative_t<indexes, AgentEvent::Value>>::decode(content));
    }...};
    return decoders[index](value);
  }

  static DecodingError wrongNumberOfKeys();
};

}  // namespace corvane
