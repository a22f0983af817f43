/// What is asked for when changes of views are to be animated, and what is shown meanwhile.
#pragma once

#include <chrono>
#include <functional>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/animation_curve.h"

namespace corvane {

/// Makes the changes; run once, inside the call that asks for the animation.
using UIViewAnimations = std::move_only_function<void()>;
/// Told once, on the run loop, when delay and duration are over. `finished` is false only where every change of the
/// block was cut short: replaced by a later one, or ended with its view.
using UIViewAnimationCompletion = std::move_only_function<void(bool finished)>;

/// An animation with a curve.
struct UIViewAnimation {
  std::chrono::nanoseconds duration{};
  std::chrono::nanoseconds delay{};
  UIViewAnimationOptions options = UIViewAnimationOptions::curveEaseInOut;
  UIViewAnimations animations{};
  UIViewAnimationCompletion completion{};
};

/// An animation that moves like a damped spring.
struct UIViewSpringAnimation {
  std::chrono::nanoseconds duration{};
  std::chrono::nanoseconds delay{};
  /// Up to 1, where the spring does not pass its target.
  double usingSpringWithDamping = 1;
  /// In whole distances per second.
  double initialSpringVelocity = 0;
  /// A spring has its own curve: one given here is taken and has no effect.
  UIViewAnimationOptions options = UIViewAnimationOptions::curveEaseInOut;
  UIViewAnimations animations{};
  UIViewAnimationCompletion completion{};
};

/// What a view shows at one moment; while nothing is animated, its own values.
struct CORVANE_EXPORT UIViewPresentation {
  CGRect bounds;
  CGPoint center;
  CGAffineTransform transform;
  CGFloat cornerRadius = 0;
  CGFloat alpha = 1;

  /// Maps the view's own coordinates to its superview's.
  [[nodiscard]] CGAffineTransform transformToSuperview() const;
  bool operator==(const UIViewPresentation&) const = default;
};

}  // namespace corvane
