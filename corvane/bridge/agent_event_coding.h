/// The JSON form of events.
#pragma once

#include <array>
#include <string_view>
#include <tuple>
#include <variant>

#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/product_cart_status_coding.h"
#include "corvane/platform/foundation/json_coder.h"

namespace corvane {

/// The names of the cases, in the order of `AgentEvent::Value`.
inline constexpr std::array<std::string_view, std::variant_size_v<AgentEvent::Value>> agentEventNames{
    "unknown",
    "callStatusUpdate",
    "clientLocale",
    "error",
    "didLoad",
    "willMinimize",
    "didMinimize",
    "willMaximize",
    "didMaximize",
    "previewStarted",
    "productUpdateInCart",
    "productRemovedFromCall",
    "productRemovedFromCart",
    "refreshSsoToken",
    "unauthorized",
};

/// Cases without values are written as empty objects.
template <class Case>
  requires std::is_empty_v<Case> && std::constructible_from<AgentEvent::Value, Case>
struct JsonFields<Case> {
  static constexpr auto fields = std::tuple{};
};
template <>
struct JsonFields<AgentEvent::CallStatusUpdate> {
  static constexpr auto fields = std::tuple{required("status", &AgentEvent::CallStatusUpdate::status)};
};
template <>
struct JsonFields<AgentEvent::ClientLocale> {
  static constexpr auto fields = std::tuple{required("locale", &AgentEvent::ClientLocale::locale)};
};
template <>
struct JsonFields<AgentEvent::ProductUpdateInCart> {
  static constexpr auto fields = std::tuple{required("data", &AgentEvent::ProductUpdateInCart::data)};
};
template <>
struct JsonFields<AgentEvent::ProductRemovedFromCall> {
  static constexpr auto fields = std::tuple{required("sku", &AgentEvent::ProductRemovedFromCall::sku)};
};
template <>
struct JsonFields<AgentEvent::ProductRemovedFromCart> {
  static constexpr auto fields = std::tuple{required("sku", &AgentEvent::ProductRemovedFromCart::sku)};
};
template <>
struct JsonFields<AgentEvent::RefreshSsoToken> {
  static constexpr auto fields = std::tuple{required("responseId", &AgentEvent::RefreshSsoToken::responseId)};
};

template <>
struct JsonCoding<AgentEvent> {
  static AgentEvent decode(JsonView value);
  static void encode(const AgentEvent& event, JsonWriter& writer);
};

}  // namespace corvane
