#include "demo/qt/customer_window.h"

#include <QGridLayout>

namespace corvane::demo {

namespace {

constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;

}  // namespace

CustomerWindow::CustomerWindow(const std::string& address) {
  setWindowTitle(QStringLiteral("The customer"));
  resize(phoneWidth, phoneHeight);
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(surface_->widget(), 0, 0);
  surface_->window()->setFrame({{0, 0}, {phoneWidth, phoneHeight}});
  page_ = WKWebView::create(surface_->window()->bounds(), {});
  page_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  surface_->window()->addSubview(page_);
  page_->load({.url = address});
}

}  // namespace corvane::demo
