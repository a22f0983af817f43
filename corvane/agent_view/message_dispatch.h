/// How a message of the page is dispatched.
#pragma once

#include "corvane/agent_view/call_state.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/web/wk_script_message.h"

namespace corvane {

/// Where the messages of a page lead; implemented by the agent view.
class PageMessageReceiver {
 public:
  virtual ~PageMessageReceiver() = default;
  /// The page asks to be shrunk.
  virtual void minimizeRequested() = 0;
  /// The page answers a request; the data lives for the length of the call.
  virtual void handleCallbackEvent(JsonView data) = 0;
  /// Something happened in the page; the call state already follows it.
  virtual void emitEvent(const AgentEvent& event) = 0;
};

/// Checks, decodes and dispatches one message. It goes to exactly one operation of the receiver, or to none where the
/// message is not for us or cannot be understood.
void dispatchMessage(const WKScriptMessage& message, CallState& state, PageMessageReceiver& receiver);

}  // namespace corvane
