#include "corvane/platform/qt/qt_widget_host.h"

#include <QWindow>

namespace corvane::qt {

namespace {

/// An app has fewer widgets in a row that cannot have the focus.
constexpr int mostSteps = 256;

}  // namespace

QWindow* WidgetHost::nativeWindow() const { return widget_ != nullptr ? widget_->window()->windowHandle() : nullptr; }

QPointF WidgetHost::fromWindow(QPointF point) const {
  return widget_ != nullptr ? widget_->mapFrom(widget_->window(), point) : point;
}

QSize WidgetHost::size() const { return widget_ != nullptr ? widget_->size() : QSize(); }

bool WidgetHost::isVisible() const { return widget_ != nullptr && widget_->isVisible(); }

void WidgetHost::queueFrame() {
  if (widget_ != nullptr) widget_->update();
}

bool WidgetHost::hasFocus() const { return widget_ != nullptr && widget_->hasFocus(); }

void WidgetHost::takeFocus(Qt::FocusReason reason) {
  if (widget_ != nullptr) widget_->setFocus(reason);
}

QWidget* WidgetHost::focused() const { return widget_ != nullptr ? widget_->window()->focusWidget() : nullptr; }

std::optional<QRectF> WidgetHost::otherFocus() const {
  const QWidget* const other = focused();
  if (other == nullptr || other == widget_) return std::nullopt;
  return boxOf(*other);
}

QRectF WidgetHost::boxOf(const QWidget& other) const {
  // Nothing covers what the surface is in.
  if (other.isAncestorOf(widget_)) return QRectF(-1, -1, 0, 0);
  const QPointF corner = other.mapTo(other.window(), QPointF());
  return QRectF(fromWindow(corner), QSizeF(other.size()));
}

void WidgetHost::dropFocus() {
  if (QWidget* const other = focused()) other->clearFocus();
}

bool WidgetHost::moveFocus(bool isForward, const FocusFilter& mayHave) {
  if (widget_ == nullptr) return false;
  QWidget* const from = focused() != nullptr ? focused() : widget_.data();
  QWidget* next = from;
  for (int step = 0; step < mostSteps; ++step) {
    next = isForward ? next->nextInFocusChain() : next->previousInFocusChain();
    if (next == from) break;
    const bool isStop = (next->focusPolicy() & Qt::TabFocus) != 0 && next->isEnabled() && next->isVisible();
    if (!isStop || next->window() != widget_->window()) continue;
    if (!mayHave(next == widget_ ? std::nullopt : std::optional(boxOf(*next)))) continue;
    next->setFocus(isForward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return false;
}

}  // namespace corvane::qt
