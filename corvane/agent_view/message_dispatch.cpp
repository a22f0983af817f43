#include "corvane/agent_view/message_dispatch.h"

#include <string>

#include "corvane/agent_view/script_bridge.h"
#include "corvane/bridge/event_message.h"
#include "corvane/platform/foundation/diagnostics.h"

namespace corvane {

namespace {

void tellOfDropped(const EventEnvelope& envelope, const char* why) {
  constexpr std::size_t longest = 100;
  diagnose(Diagnostic::Kind::messageDropped, [&] {
    return "message \"" + std::string(envelope.eventType.value_or("without a type").substr(0, longest)) + "\": " + why;
  });
}

}  // namespace

void dispatchMessage(const WKScriptMessage& message, CallState& state, PageMessageReceiver& receiver) {
  if (message.name != agentEventChannel) return;
  const EventEnvelope envelope = readEventEnvelope(message.body);
  if (!isAgentToolEvent(envelope)) return tellOfDropped(envelope, "not of the agent tool");
  const auto [type, data] = parseEventMessage(envelope);
  if (type == WebAgentEventType::minimizeAgentTool) return receiver.minimizeRequested();
  // The resolved type decides: a made-up type that ends like an answer is none.
  if (rawValue(type).ends_with(answerSuffix)) return receiver.handleCallbackEvent(data);
  const auto event = makeAgentEvent(type, data);
  if (!event) return tellOfDropped(envelope, "an unknown type, or data that it cannot have");
  state.apply(*event);
  receiver.emitEvent(*event);
}

}  // namespace corvane
