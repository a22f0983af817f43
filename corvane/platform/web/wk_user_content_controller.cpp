#include "corvane/platform/web/wk_user_content_controller.h"

#include <cassert>
#include <utility>

namespace corvane {

WKScriptMessageHandler::~WKScriptMessageHandler() = default;

void WKUserContentController::addUserScript(WKUserScript script) { contents_.emplace_back(std::move(script)); }

void WKUserContentController::addScriptMessageHandler(std::shared_ptr<WKScriptMessageHandler> handler,
                                                      std::string name) {
  const auto [place, isNew] = handlers_.try_emplace(std::move(name), std::move(handler));
  assert(isNew && "a message channel has one handler");
  if (isNew) contents_.emplace_back(MessageChannel{place->first});
}

void WKUserContentController::deliver(const WKScriptMessage& message) {
  const auto place = handlers_.find(message.name);
  if (place == handlers_.end()) return;
  const auto handler = place->second;
  handler->userContentControllerDidReceive(*this, message);
}

}  // namespace corvane
