#include "corvane/platform/views/view_animations.h"

#include <utility>
#include <vector>

#include "corvane/platform/foundation/main_thread_state.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Every view that may be moving.
///
/// Ownership: shared by the platform's state and the views on it.
class MovingViews {
 public:
  /// That of the installed platform.
  static const std::shared_ptr<MovingViews>& shared() {
    auto& list = mainThreadState().movingViews;
    if (list == nullptr) list = std::make_shared<MovingViews>();
    return list;
  }

  std::vector<ViewAnimations*> all;
};

ViewAnimations::~ViewAnimations() {
  delist();
  // A view may be the last thing that a host app releases, after its backend.
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
  const auto& list = MovingViews::shared();
  if (list_ == list) return;
  // It may be on the list of a platform that has ended.
  delist();
  list_ = list;
  index_ = list_->all.size();
  list_->all.push_back(this);
}

void ViewAnimations::delist() {
  const auto list = std::exchange(list_, nullptr);
  if (list == nullptr) return;
  ViewAnimations* const last = list->all.back();
  list->all[index_] = last;
  last->index_ = index_;
  list->all.pop_back();
}

bool ViewAnimations::isRunningAt(RunLoop::Time now) const {
  const auto isRunning = [&](const auto& property) { return property.run != nullptr && !property.run->isOverAt(now); };
  return isRunning(bounds) || isRunning(center) || isRunning(transform) || isRunning(cornerRadius) || isRunning(alpha);
}

bool ViewAnimations::isAnyRunning(const UIView& root) {
  const MainThreadState* const state = findMainThreadState();
  if (state == nullptr || state->movingViews == nullptr) return false;
  const auto& moving = state->movingViews->all;
  if (moving.empty()) return false;
  const RunLoop::Time now = ViewAnimations::now();
  for (std::size_t index = 0; index < moving.size();) {
    ViewAnimations& animations = *moving[index];
    if (!animations.isRunningAt(now)) {
      animations.delist();
      continue;
    }
    if (animations.view_.isDescendantOf(root)) return true;
    ++index;
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
