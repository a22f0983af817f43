#include "corvane/platform/qt/qt_page_view.h"

#include <QChildEvent>
#include <QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuickWidgets/QQuickWidget>
#include <utility>

namespace corvane::qt {

namespace {

/// For pages that no surface has shown yet.
constexpr QSize usualSize(390, 844);

}  // namespace

PageView::PageView() {
  setAttribute(Qt::WA_DontShowOnScreen);
  setAttribute(Qt::WA_QuitOnClose, false);
  // A menu of the engine's would lead away from the call.
  setContextMenuPolicy(Qt::NoContextMenu);
  // The window is made anew for the first such child, and would come on screen then.
  prime_ = new QQuickWidget(this);
  prime_->resize(1, 1);
  prime_->lower();
  resize(usualSize);
  show();
}

void PageView::setPageSize(QSize size) {
  if (size != this->size()) resize(size);
}

void PageView::childEvent(QChildEvent* event) {
  QWebEngineView::childEvent(event);
  if (event->type() != QEvent::ChildRemoved) watchPicture();
}

bool PageView::focusNextPrevChild(bool isForward) {
  if (const auto leave = endOfTabs_) leave(isForward);
  return true;
}

void PageView::watchPicture() {
  for (QQuickWidget* const candidate : findChildren<QQuickWidget*>()) {
    if (candidate == prime_ || candidate == drawn_ || candidate != focusProxy()) continue;
    drawn_ = candidate;
    const auto noteChange = [this] {
      // Taking the picture makes the engine draw again.
      if (isDrawing_ || isStale_) return;
      isStale_ = true;
      if (const auto changed = changed_) changed();
    };
    connect(candidate->quickWindow(), &QQuickWindow::afterRendering, this, noteChange, Qt::DirectConnection);
    isStale_ = true;
    if (const auto changed = changed_) changed();
  }
}

void PageView::draw(QPainter& painter, qreal devicePixelRatio) {
  watchPicture();
  if (drawn_ == nullptr) return;
  const QSize pixels = size() * devicePixelRatio;
  if (picture_.size() != pixels || picture_.devicePixelRatio() != devicePixelRatio) {
    picture_ = QImage(pixels, QImage::Format_RGB32);
    picture_.setDevicePixelRatio(devicePixelRatio);
    picture_.fill(Qt::white);
    isStale_ = true;
  }
  if (std::exchange(isStale_, false)) {
    isDrawing_ = true;
    QPainter taking(&picture_);
    render(&taking, {}, {}, QWidget::DrawChildren);
    isDrawing_ = false;
  }
  painter.drawImage(QRectF(rect()), picture_);
}

}  // namespace corvane::qt
