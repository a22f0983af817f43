/// The customer's side of the call, in a window of its own. It could be any browser elsewhere.
#pragma once

#include <QWidget>
#include <memory>
#include <string>

#include "corvane/platform/qt/qt_surface.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::demo {

/// Ownership: owned by its maker. Threads: main thread only. A backend must be installed.
class CustomerWindow final : public QWidget {
 public:
  explicit CustomerWindow(const std::string& address);

  [[nodiscard]] WKWebView& page() { return *page_; }

 private:
  std::shared_ptr<qt::Surface> surface_ = qt::Surface::create();
  std::shared_ptr<WKWebView> page_;
};

}  // namespace corvane::demo
