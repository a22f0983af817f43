#include "corvane/agent_view/web_script_message_handler.h"

namespace corvane {

void WebScriptMessageHandler::userContentControllerDidReceive(WKUserContentController& controller,
                                                              const WKScriptMessage& message) {
  if (const auto delegate = delegate_.lock()) delegate->userContentControllerDidReceive(controller, message);
}

}  // namespace corvane
