#include "tests/contract/contract_platform.h"

namespace corvane::contract {

std::shared_ptr<WKWebView> findWebView(const UIView& view) {
  for (const auto& subview : view.subviews()) {
    if (auto webView = std::dynamic_pointer_cast<WKWebView>(subview)) return webView;
    if (auto inner = findWebView(*subview)) return inner;
  }
  return nullptr;
}

std::vector<PlatformMaker> platforms() {
  return {
      headlessPlatform(),
#ifdef CORVANE_HAS_GTK
      gtkPlatform(),
#endif
  };
}

}  // namespace corvane::contract
