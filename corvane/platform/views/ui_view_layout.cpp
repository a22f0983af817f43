// When views are laid out.
#include "corvane/platform/views/ui_view.h"

#include "corvane/platform/foundation/platform.h"

namespace corvane {

void UIView::layoutSubviews() {}
void UIView::didMoveToSuperview() {}
void UIView::didMoveToWindow() {}

void UIView::setNeedsLayout() {
  assertMainThread();
  needsLayout_ = true;
  noteLayoutPending();
  noteChange();
}

void UIView::noteFitChange() {
  setNeedsLayout();
  for (auto view = superview(); view != nullptr; view = view->superview()) {
    if (view->placesByFit()) view->needsLayout_ = true;
  }
}

CGSize UIView::sizeThatFits(CGSize /*offered*/) const { return bounds().size; }

void UIView::noteLayoutPending() {
  isLayoutPending_ = true;
  for (auto view = superview(); view != nullptr && !view->isLayoutPending_; view = view->superview()) {
    view->isLayoutPending_ = true;
  }
}

void UIView::layoutIfNeeded() {
  assertMainThread();
  if (!isLayoutPending_) return;
  const auto alive = shared_from_this();
  // Cleared first: what is asked for during layout waits for the next one.
  isLayoutPending_ = false;
  if (needsLayout_) {
    needsLayout_ = false;
    layoutSubviews();
  }
  const auto subviews = subviews_;
  for (const auto& view : subviews) {
    if (view->superview() == alive) view->layoutIfNeeded();
  }
}

}  // namespace corvane
