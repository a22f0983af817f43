/// The changes of one view that are still on their way.
#pragma once

#include <cstddef>
#include <memory>

#include "corvane/platform/views/animation_run.h"

namespace corvane {

class MovingViews;
class UIView;

/// One animatable property: where its change came from, and the run that it belongs to. It goes to the view's own
/// value, because a change from outside ends it.
template <class Value>
struct AnimatedProperty {
  Value from{};
  std::shared_ptr<AnimationRun> run{};
};

/// Kept by views that have been animated; those that have not have none.
///
/// Ownership: owned by its view.
/// Threads:   main thread only.
class ViewAnimations {
 public:
  explicit ViewAnimations(const UIView& view) : view_(view) {}
  ViewAnimations(const ViewAnimations&) = delete;
  ViewAnimations& operator=(const ViewAnimations&) = delete;
  ~ViewAnimations();

  /// The run loop's time, or the end of all time without one: a view that outlives its backend has arrived.
  [[nodiscard]] static RunLoop::Time now();
  /// Whether a view at or below the root is still moving. Looks only at views that move.
  [[nodiscard]] static bool isAnyRunning(const UIView& root);

  /// Lets a property that now shows `shown` go on to its new value in the time of the run.
  template <class Value>
  void start(AnimatedProperty<Value>& property, const std::shared_ptr<AnimationRun>& run, const Value& shown,
             RunLoop::Time now) {
    // A block that writes a property twice moves it once.
    if (property.run == run) return;
    stop(property, now);
    property = {shown, run};
    run->noteStarted();
    enlist();
  }

  template <class Value>
  static void stop(AnimatedProperty<Value>& property, RunLoop::Time now) {
    if (property.run == nullptr) return;
    if (!property.run->isOverAt(now)) property.run->noteCutShort();
    property.run.reset();
  }

  AnimatedProperty<CGRect> bounds;
  AnimatedProperty<CGPoint> center;
  AnimatedProperty<CGAffineTransform> transform;
  AnimatedProperty<CGFloat> cornerRadius;
  AnimatedProperty<CGFloat> alpha;

 private:
  friend class MovingViews;
  [[nodiscard]] bool isRunningAt(RunLoop::Time now) const;
  void enlist();
  void delist();

  const UIView& view_;
  /// The list that it is on, at an index; null for none. It may outlive the platform.
  std::shared_ptr<MovingViews> list_;
  std::size_t index_ = 0;
};

/// What a property with this value of its own shows.
[[nodiscard]] CGFloat mix(CGFloat from, CGFloat to, double fraction);
[[nodiscard]] CGPoint mix(CGPoint from, CGPoint to, double fraction);
[[nodiscard]] CGRect mix(const CGRect& from, const CGRect& to, double fraction);
[[nodiscard]] CGAffineTransform mix(const CGAffineTransform& from, const CGAffineTransform& to, double fraction);

template <class Value>
[[nodiscard]] Value shownValue(const AnimatedProperty<Value>& property, const Value& own, RunLoop::Time now) {
  if (property.run == nullptr || property.run->isOverAt(now)) return own;
  return mix(property.from, own, property.run->valueAt(now));
}

}  // namespace corvane
