#include "corvane/platform/views/touch_anchor.h"

#include <cmath>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane {

TouchAnchor::TouchAnchor(UIWindow& window, CGPoint location)
    : window_(std::static_pointer_cast<UIWindow>(window.shared_from_this())), location_(location) {
  assertMainThread();
  const auto view = window.hitTest(location);
  if (view == nullptr) return;
  view_ = view;
  locationInView_ = view->convertPointFrom(location, nullptr);
  isOnView_ = true;
}

bool TouchAnchor::hasMoved() const {
  assertMainThread();
  if (!isOnView_) return false;
  const auto view = view_.lock();
  const auto window = window_.lock();
  if (view == nullptr || window == nullptr || view->window() != window) return true;
  const CGPoint now = view->convertPoint(locationInView_, nullptr);
  constexpr CGFloat slop = 10;
  return !(std::hypot(now.x - location_.x, now.y - location_.y) <= slop);
}

}  // namespace corvane
