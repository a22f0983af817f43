#include "corvane/agent_view/message_dispatch.h"

#include "corvane/agent_view/script_bridge.h"
#include "corvane/bridge/event_message.h"

namespace corvane {

void dispatchMessage(const WKScriptMessage& message, CallState& state, PageMessageReceiver& receiver) {
  if (message.name != agentEventChannel) return;
  const EventEnvelope envelope = readEventEnvelope(message.body);
  if (!isAgentToolEvent(envelope)) return;
  const auto [type, data] = parseEventMessage(envelope);
  if (type == WebAgentEventType::minimizeAgentTool) return receiver.minimizeRequested();
  // The resolved type decides: a made-up type that ends like an answer is none.
  if (rawValue(type).ends_with(answerSuffix)) return receiver.handleCallbackEvent(data);
  const auto event = makeAgentEvent(type, data);
  if (!event) return;
  state.apply(*event);
  receiver.emitEvent(*event);
}

}  // namespace corvane
