#include "corvane/platform/web/wk_user_content_controller.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace corvane {

WKScriptMessageHandler::~WKScriptMessageHandler() = default;

void WKUserContentController::addUserScript(WKUserScript script) { contents_.emplace_back(std::move(script)); }

void WKUserContentController::addScriptMessageHandler(std::shared_ptr<WKScriptMessageHandler> handler, std::string name,
                                                      std::optional<MessageFilter> filter) {
  const bool isNew = std::ranges::find(handlers_, name, &decltype(handlers_)::value_type::first) == handlers_.end();
  assert(isNew && "a message channel has one handler");
  if (!isNew) return;
  contents_.emplace_back(MessageChannel{.name = name, .filter = std::move(filter)});
  handlers_.emplace_back(std::move(name), std::move(handler));
}

void WKUserContentController::deliver(const WKScriptMessage& message) {
  const auto found = std::ranges::find(handlers_, message.name, &decltype(handlers_)::value_type::first);
  if (found != handlers_.end()) found->second->userContentControllerDidReceive(*this, message);
}

}  // namespace corvane
