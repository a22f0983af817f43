#include "corvane/platform/qt/qt_developer_tools.h"

#include <QtWebEngineCore/QWebEnginePage>
#include <QtWebEngineWidgets/QWebEngineView>
#include <algorithm>
#include <memory>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_web_engine.h"
#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::qt {

namespace {

constexpr QSize usualSize{960, 640};

void showToolsOf(QWebEnginePage& page) {
  if (QWebEnginePage* const present = page.devToolsPage()) {
    if (QWebEngineView* const shown = QWebEngineView::forPage(present)) return shown->raise();
  }
  auto tools = std::make_unique<QWebEngineView>();
  tools->setAttribute(Qt::WA_DeleteOnClose);
  tools->resize(usualSize);
  tools->page()->setInspectedPage(&page);
  QObject::connect(tools->page(), &QWebEnginePage::windowCloseRequested, tools.get(), &QWidget::close);
  QObject::connect(&page, &QObject::destroyed, tools.get(), &QWidget::close);
  // Closing it ends it.
  tools.release()->show();
}

}  // namespace

bool showDeveloperTools(const UIView& view) {
  assertMainThread();
  const auto* const webView = dynamic_cast<const WKWebView*>(&view);
  const auto* const engine = webView != nullptr ? dynamic_cast<const QtWebEngine*>(&webView->engine()) : nullptr;
  if (engine == nullptr) {
    return std::ranges::any_of(view.subviews(), [](const auto& subview) { return showDeveloperTools(*subview); });
  }
  showToolsOf(*engine->view().page());
  return true;
}

}  // namespace corvane::qt
