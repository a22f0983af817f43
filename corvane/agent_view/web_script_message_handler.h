/// The receiver that a web view may hold strongly without keeping the agent view alive.
#pragma once

#include <memory>
#include <utility>

#include "corvane/platform/web/wk_script_message.h"

namespace corvane {

/// Passes messages on to a receiver that it holds weakly; drops them once the receiver is gone.
class WebScriptMessageHandler final : public WKScriptMessageHandler {
 public:
  explicit WebScriptMessageHandler(std::weak_ptr<WKScriptMessageHandler> delegate) : delegate_(std::move(delegate)) {}

  void userContentControllerDidReceive(WKUserContentController& controller, const WKScriptMessage& message) override;

 private:
  std::weak_ptr<WKScriptMessageHandler> delegate_;
};

}  // namespace corvane
