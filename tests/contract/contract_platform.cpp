#include "tests/contract/contract_platform.h"

#ifdef CORVANE_HAS_REAL_ENGINE
#include "tests/contract/real_engine_platform.h"
#endif

namespace corvane::contract {

std::shared_ptr<WKWebView> findWebView(const UIView& view) {
  for (const auto& subview : view.subviews()) {
    if (auto webView = std::dynamic_pointer_cast<WKWebView>(subview)) return webView;
    if (auto inner = findWebView(*subview)) return inner;
  }
  return nullptr;
}

std::vector<PlatformMaker> platforms() {
  std::vector<PlatformMaker> makers{headlessPlatform()};
#ifdef CORVANE_HAS_REAL_ENGINE
  for (const RealEngineMaker& engine : realEngines()) makers.push_back({engine.name, engine.make});
#endif
  return makers;
}

}  // namespace corvane::contract
