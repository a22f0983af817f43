#include "corvane/bridge/event_message.h"

#include <string>
#include <string_view>
#include <utility>

#include "corvane/bridge/page_event_records.h"
#include "corvane/bridge/product_cart_status_coding.h"

namespace corvane {

namespace {

std::optional<AgentEvent> translate(WebAgentEventType type, JsonView data) {
  switch (type) {
    using enum WebAgentEventType;
    case callStarted: {
      const auto platform = data.find("clientPlatform");
      if (!platform || !platform->isObject()) return std::nullopt;
      return AgentEvent::ClientLocale{decodeFromJsonObject<ClientPlatform>(*platform).locale};
    }
    case callStatus:
      return AgentEvent::CallStatusUpdate{decodeFromJsonObject<CallStatus>(data).status};
    case minimizeAgentTool:
      return AgentEvent::DidMinimize{};
    case productUpdateInCart:
      return AgentEvent::ProductUpdateInCart{decodeFromJsonObject<ProductCartStatus>(data)};
    // A removal counts only with its quantity, although nobody needs it.
    case productRemovedFromCall:
      return AgentEvent::ProductRemovedFromCall{decodeFromJsonObject<ProductCartStatus>(data).sku};
    case productRemovedFromCart:
      return AgentEvent::ProductRemovedFromCart{decodeFromJsonObject<ProductCartStatus>(data).sku};
    case WebAgentEventType::refreshSsoToken: {
      const auto responseId = data.findString("responseId");
      if (!responseId) return std::nullopt;
      return AgentEvent::RefreshSsoToken{std::string(*responseId)};
    }
    case unauthorized:
      return AgentEvent::Unauthorized{};
    // Answers are no events.
    default:
      return std::nullopt;
  }
}

}  // namespace

EventEnvelope readEventEnvelope(JsonView message) {
  EventEnvelope envelope;
  for (const JsonView::Member member : message.members()) {
    if (member.key == eventTypeKey) {
      envelope.eventType = member.value.string();
    } else if (member.key == "data") {
      envelope.data = member.value.isObject() ? member.value : JsonView::emptyObject();
    }
  }
  return envelope;
}

bool isAgentToolEvent(const EventEnvelope& envelope) {
  return envelope.eventType && envelope.eventType->starts_with(eventTypePrefix);
}

bool isKnownEventType(std::string_view eventType) { return fromRawValue<WebAgentEventType>(eventType).has_value(); }

EventMessage parseEventMessage(const EventEnvelope& envelope) {
  const auto type = fromRawValue<WebAgentEventType>(envelope.eventType.value_or(""));
  return {.type = type.value_or(WebAgentEventType::unknown), .data = envelope.data};
}

std::optional<AgentEvent> makeAgentEvent(WebAgentEventType type, JsonView data) {
  try {
    return translate(type, data);
  } catch (const DecodingError&) {
    return std::nullopt;
  } catch (JsonError) {
    return std::nullopt;
  }
}

}  // namespace corvane
