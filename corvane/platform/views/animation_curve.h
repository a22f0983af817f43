/// How far a change has come at each moment of its animation.
#pragma once

#include <chrono>
#include <cstdint>
#include <variant>

#include "corvane/export.h"

namespace corvane {

/// The pace of an animation that has no spring.
enum class UIViewAnimationOptions : std::uint8_t { curveEaseInOut, curveEaseIn, curveEaseOut, curveLinear };

/// The pace of one animation: a value over the fraction of its duration that has passed. It begins at 0 and is exactly
/// 1 at the end; springs may pass 1 on the way.
class CORVANE_EXPORT AnimationCurve {
 public:
  explicit AnimationCurve(UIViewAnimationOptions options);
  /// A spring that comes to rest within the duration. The damping ratio is brought into 0.01…1; at 1 the spring never
  /// passes its target. The velocity is in whole distances per second.
  static AnimationCurve spring(double dampingRatio, double initialVelocity, std::chrono::nanoseconds duration);

  [[nodiscard]] double valueAt(double fraction) const;

 private:
  /// A cubic curve from (0, 0) to (1, 1) by its two control points.
  struct Bezier {
    double x1;
    double y1;
    double x2;
    double y2;
    [[nodiscard]] double valueAt(double fraction) const;
  };
  /// A damped oscillator released at distance 1 from its rest; the unit of time is the animation's duration.
  struct Spring {
    double decay;
    double frequency;
    double velocity;
    [[nodiscard]] double valueAt(double fraction) const;
  };

  explicit AnimationCurve(Spring spring) : curve_(spring) {}
  static Bezier bezier(UIViewAnimationOptions options);

  std::variant<Bezier, Spring> curve_;
};

}  // namespace corvane
