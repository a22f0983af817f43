#include "corvane/platform/qt/qt_item_host.h"

#include <QtQuick/QQuickWindow>

namespace corvane::qt {

namespace {

/// A scene has fewer items in a row that cannot have the focus.
constexpr int mostSteps = 256;

}  // namespace

QWindow* ItemHost::nativeWindow() const { return item_ != nullptr ? item_->window() : nullptr; }

QPointF ItemHost::fromWindow(QPointF point) const { return item_ != nullptr ? item_->mapFromScene(point) : point; }

QSize ItemHost::size() const { return item_ != nullptr ? item_->size().toSize() : QSize(); }

bool ItemHost::isVisible() const {
  return item_ != nullptr && item_->isVisible() && item_->window() != nullptr && item_->window()->isVisible();
}

void ItemHost::queueFrame() {
  if (item_ == nullptr) return;
  // Both for the same frame.
  item_->polish();
  item_->update();
}

bool ItemHost::hasFocus() const { return item_ != nullptr && item_->hasActiveFocus(); }

void ItemHost::takeFocus(Qt::FocusReason reason) {
  if (item_ != nullptr) item_->forceActiveFocus(reason);
}

QQuickItem* ItemHost::focused() const {
  if (item_ == nullptr || item_->window() == nullptr) return nullptr;
  QQuickItem* const focused = item_->window()->activeFocusItem();
  return focused == item_->window()->contentItem() ? nullptr : focused;
}

std::optional<QRectF> ItemHost::otherFocus() const {
  const QQuickItem* const other = focused();
  if (other == nullptr || other == item_) return std::nullopt;
  return boxOf(*other);
}

QRectF ItemHost::boxOf(const QQuickItem& other) const { return other.mapRectToItem(item_, other.boundingRect()); }

void ItemHost::dropFocus() {
  if (QQuickItem* const present = focused()) present->setFocus(false);
}

bool ItemHost::moveFocus(bool isForward, const FocusFilter& mayHave) {
  if (item_ == nullptr) return false;
  QQuickItem* const from = focused() != nullptr ? focused() : item_.data();
  QQuickItem* next = from;
  for (int step = 0; step < mostSteps; ++step) {
    next = next->nextItemInFocusChain(isForward);
    if (next == nullptr || next == from) break;
    if (!next->activeFocusOnTab() || !mayHave(next == item_ ? std::nullopt : std::optional(boxOf(*next)))) continue;
    next->forceActiveFocus(isForward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
  }
  return false;
}

}  // namespace corvane::qt
