#include "corvane/platform/views/view_animations.h"

#include <vector>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

namespace {

/// Every view that may be moving. It is never destroyed, since views may end after it would be.
std::vector<ViewAnimations*>& enlisted() {
  static auto& list = *new std::vector<ViewAnimations*>;
  return list;
}

}  // namespace

ViewAnimations::~ViewAnimations() {
  delist();
  // A view may be the last thing that a host app lets go, after its backend.
  if (!RunLoop::hasMain()) return;
  const RunLoop::Time now = RunLoop::main().now();
  stop(bounds, now);
  stop(center, now);
  stop(transform, now);
  stop(cornerRadius, now);
  stop(alpha, now);
}

RunLoop::Time ViewAnimations::now() { return RunLoop::hasMain() ? RunLoop::main().now() : RunLoop::Time::max(); }

void ViewAnimations::enlist() {
  if (place_ != notEnlisted) return;
  place_ = enlisted().size();
  enlisted().push_back(this);
}

void ViewAnimations::delist() {
  if (place_ == notEnlisted) return;
  ViewAnimations* const last = enlisted().back();
  enlisted()[place_] = last;
  last->place_ = place_;
  enlisted().pop_back();
  place_ = notEnlisted;
}

bool ViewAnimations::isRunningAt(RunLoop::Time now) const {
  const auto isRunning = [&](const auto& property) { return property.run != nullptr && !property.run->isOverAt(now); };
  return isRunning(bounds) || isRunning(center) || isRunning(transform) || isRunning(cornerRadius) || isRunning(alpha);
}

bool ViewAnimations::isAnyRunning(const UIView& root) {
  if (enlisted().empty()) return false;
  const RunLoop::Time now = ViewAnimations::now();
  for (std::size_t i = 0; i < enlisted().size();) {
    ViewAnimations& animations = *enlisted()[i];
    if (!animations.isRunningAt(now)) {
      animations.delist();
      continue;
    }
    if (animations.view_.isDescendantOf(root)) return true;
    ++i;
  }
  return false;
}

CGFloat mix(CGFloat from, CGFloat to, double fraction) { return from + (to - from) * fraction; }

CGPoint mix(CGPoint from, CGPoint to, double fraction) {
  return {mix(from.x, to.x, fraction), mix(from.y, to.y, fraction)};
}

CGRect mix(const CGRect& from, const CGRect& to, double fraction) {
  return {mix(from.origin, to.origin, fraction),
          {mix(from.size.width, to.size.width, fraction), mix(from.size.height, to.size.height, fraction)}};
}

CGAffineTransform mix(const CGAffineTransform& from, const CGAffineTransform& to, double fraction) {
  return {.a = mix(from.a, to.a, fraction),
          .b = mix(from.b, to.b, fraction),
          .c = mix(from.c, to.c, fraction),
          .d = mix(from.d, to.d, fraction),
          .tx = mix(from.tx, to.tx, fraction),
          .ty = mix(from.ty, to.ty, fraction)};
}

}  // namespace corvane
