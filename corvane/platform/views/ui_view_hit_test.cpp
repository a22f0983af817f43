// Which view lies under a point, and where a point of one view lies in another.
#include <algorithm>
#include <ranges>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

namespace {

/// What is fainter cannot be seen, and takes no touches.
constexpr CGFloat leastVisibleAlpha = 0.01;

bool isInRoundedRect(CGPoint point, const CGRect& rect, CGFloat radius) {
  if (!rect.contains(point)) return false;
  const CGFloat round = std::min({radius, rect.size.width / 2, rect.size.height / 2});
  if (!(round > 0)) return true;
  // How far the point lies in the corner's square, beyond the centre of the corner's circle.
  const CGFloat dx = std::max({rect.minX() + round - point.x, point.x - (rect.maxX() - round), 0.0});
  const CGFloat dy = std::max({rect.minY() + round - point.y, point.y - (rect.maxY() - round), 0.0});
  return dx * dx + dy * dy <= round * round;
}

CGPoint toRoot(CGPoint point, const UIView& view) {
  point = view.superview() != nullptr ? view.transformToSuperview().apply(point) : point;
  for (auto ancestor = view.superview(); ancestor != nullptr; ancestor = ancestor->superview()) {
    if (ancestor->superview() != nullptr) point = ancestor->transformToSuperview().apply(point);
  }
  return point;
}

CGPoint fromRoot(CGPoint point, const UIView& view) {
  const auto parent = view.superview();
  if (parent == nullptr) return point;
  const auto back = view.transformToSuperview().inverted();
  if (!back) return {view.bounds().midX(), view.bounds().midY()};
  return back->apply(fromRoot(point, *parent));
}

}  // namespace

CGPoint UIView::convertPoint(CGPoint point, const UIView* toView) const {
  if (toView == this) return point;
  const CGPoint root = toRoot(point, *this);
  return toView != nullptr ? fromRoot(root, *toView) : root;
}

CGPoint UIView::convertPointFrom(CGPoint point, const UIView* fromView) const {
  if (fromView == this) return point;
  return fromRoot(fromView != nullptr ? toRoot(point, *fromView) : point, *this);
}

bool UIView::pointInside(CGPoint point) const { return bounds_.contains(point); }

bool UIView::isOutsideOfClip(CGPoint point) const {
  return clipsToBounds_ && !isInRoundedRect(point, bounds_, cornerRadius_);
}

std::shared_ptr<UIView> UIView::hitTest(CGPoint point) {
  if (isHidden_ || !isUserInteractionEnabled_ || alpha_ < leastVisibleAlpha || isOutsideOfClip(point)) return nullptr;
  for (const auto& view : std::views::reverse(subviews_)) {
    const auto toSubview = view->transformToSuperview().inverted();
    if (!toSubview) continue;
    if (auto hit = view->hitTest(toSubview->apply(point))) return hit;
  }
  return pointInside(point) ? shared_from_this() : nullptr;
}

}  // namespace corvane
