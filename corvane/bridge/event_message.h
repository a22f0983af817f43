/// From a page message to an event: the envelope, its payload and their translation.
#pragma once

#include <optional>

#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/web_agent_event_type.h"
#include "corvane/platform/foundation/json_coder.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane {

/// A dictionary that cannot be written as JSON text and read back.
enum class JsonError {
  format,  ///< some text in it has no UTF-8 form
};

struct EventMessage {
  WebAgentEventType type = WebAgentEventType::unknown;
  /// Always an object; empty where the message brought none. It lives as long as the message.
  JsonView data = JsonView::emptyObject();
};

/// Whether a message comes from the agent tool: its "eventType" is a text that begins with "SDK_".
[[nodiscard]] bool isAgentToolEvent(JsonView message);

/// The type and the payload of a message. A type out of the vocabulary becomes `unknown`, a payload that is no object
/// becomes an empty one.
[[nodiscard]] EventMessage parseEventMessage(JsonView message);

/// Decodes a record from a dictionary, as if by way of its JSON text.
///
/// Throws `JsonError` for a dictionary without such a text, else the record's `DecodingError`.
template <class Record>
[[nodiscard]] Record decodeFromJsonObject(JsonView object) {
  if (!object.isWellFormed()) throw JsonError::format;
  return JsonCoding<Record>::decode(object);
}

/// The event that a message of the page stands for; none for answers to requests, for unknown types and for payloads
/// that lack what the event needs.
[[nodiscard]] std::optional<AgentEvent> makeAgentEvent(WebAgentEventType type, JsonView data);

}  // namespace corvane
