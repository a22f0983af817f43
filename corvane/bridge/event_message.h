/// From a page message to an event: the envelope, its payload and their translation.
#pragma once

#include <optional>
#include <string_view>

#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/web_agent_event_type.h"
#include "corvane/platform/foundation/json_coder.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane {

/// A dictionary that cannot be written as JSON text and read back.
enum class JsonError {
  format,  ///< some text in it has no UTF-8 form
};

/// The member of a page message that tells what it is.
inline constexpr std::string_view eventTypeKey = "eventType";

/// What is read of a page message, whatever it is.
struct EventEnvelope {
  /// The "eventType" where that is a text.
  std::optional<std::string_view> eventType;
  /// The "data" where that is an object, else an empty object.
  JsonView data = JsonView::emptyObject();
};

/// The envelope lives as long as the message.
[[nodiscard]] EventEnvelope readEventEnvelope(JsonView message);

/// Whether a message comes from the agent tool: its type begins with "SDK_".
[[nodiscard]] bool isAgentToolEvent(const EventEnvelope& envelope);

/// Whether a message of this type may mean anything to us.
[[nodiscard]] bool isKnownEventType(std::string_view eventType);

struct EventMessage {
  /// `unknown` for every type out of the vocabulary.
  WebAgentEventType type = WebAgentEventType::unknown;
  JsonView data;
};

[[nodiscard]] EventMessage parseEventMessage(const EventEnvelope& envelope);

/// Decodes a record from a dictionary, as if by way of its JSON text.
///
/// Throws `JsonError` for a dictionary without such a text, else the record's `DecodingError`.
template <class Record>
[[nodiscard]] Record decodeFromJsonObject(JsonView object) {
  if (!object.isWellFormed()) throw JsonError::format;
  return JsonCoding<Record>::decode(object);
}

/// The same, but none where the record cannot be decoded.
template <class Record>
[[nodiscard]] std::optional<Record> tryDecodeFromJsonObject(JsonView object) {
  try {
    return decodeFromJsonObject<Record>(object);
  } catch (const DecodingError&) {
    return std::nullopt;
  } catch (JsonError) {
    return std::nullopt;
  }
}

/// The event that a message of the page stands for. None for answers to requests, for unknown types and for payloads
/// that lack what the event needs.
[[nodiscard]] std::optional<AgentEvent> makeAgentEvent(WebAgentEventType type, JsonView data);

}  // namespace corvane
