/// How a web view is set up.
#pragma once

#include <memory>

#include "corvane/platform/web/wk_user_content_controller.h"

namespace corvane {

/// What a web view is made with.
struct WKWebViewConfiguration {
  /// Videos play where they stand in the page instead of taking over the screen.
  bool allowsInlineMediaPlayback = false;
  std::shared_ptr<WKUserContentController> userContentController = std::make_shared<WKUserContentController>();
};

}  // namespace corvane
