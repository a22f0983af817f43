#include "corvane/platform/views/animation_curve.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

double cubic(double p1, double p2, double t) {
  const double rest = 1 - t;
  return 3 * rest * rest * t * p1 + 3 * rest * t * t * p2 + t * t * t;
}

/// The weakest decay that leaves less than a thousandth of the distance at the end. The oscillator is never further
/// out than e^(-decay·t) · (1 + |decay - velocity|·t), whatever its frequency, and that falls as the decay grows.
double settlingDecay(double velocity) {
  constexpr double rest = 0.001;
  const auto isSettled = [&](double decay) { return std::exp(-decay) * (1 + std::abs(decay - velocity)) <= rest; };
  double high = 1;
  while (!isSettled(high)) high *= 2;
  double low = 0;
  while (high - low > 1e-9 * high) {
    const double middle = (low + high) / 2;
    (isSettled(middle) ? high : low) = middle;
  }
  return high;
}

}  // namespace

AnimationCurve::AnimationCurve(UIViewAnimationOptions options) : curve_(bezier(options)) {}

AnimationCurve::Bezier AnimationCurve::bezier(UIViewAnimationOptions options) {
  switch (options) {
    case UIViewAnimationOptions::curveEaseIn:
      return {0.42, 0, 1, 1};
    case UIViewAnimationOptions::curveEaseOut:
      return {0, 0, 0.58, 1};
    case UIViewAnimationOptions::curveLinear:
      return {0, 0, 1, 1};
    case UIViewAnimationOptions::curveEaseInOut:
      break;
  }
  return {0.42, 0, 0.58, 1};
}

AnimationCurve AnimationCurve::spring(double dampingRatio, double initialVelocity, std::chrono::nanoseconds duration) {
  // Written so that NaN becomes a bound, too.
  const double ratio = dampingRatio > 0.01 ? std::min(dampingRatio, 1.0) : 0.01;
  constexpr double fastest = 1e6;
  const double wanted = initialVelocity * std::chrono::duration<double>(duration).count();
  const double velocity = std::isfinite(wanted) ? std::clamp(wanted, -fastest, fastest) : 0;
  double decay = settlingDecay(velocity);
  if (ratio >= 1) decay = std::max(decay, velocity);  // Faster than its decay, the spring would shoot past its rest.
  return AnimationCurve(Spring{decay, decay / ratio * std::sqrt(1 - ratio * ratio), velocity});
}

double AnimationCurve::valueAt(double fraction) const {
  if (!(fraction > 0)) return 0;
  if (fraction >= 1) return 1;
  return std::visit([&](const auto& curve) { return curve.valueAt(fraction); }, curve_);
}

double AnimationCurve::Bezier::valueAt(double fraction) const {
  if (x1 == y1 && x2 == y2) return fraction;
  // x grows with the parameter, so halving always finds it.
  double low = 0;
  double high = 1;
  for (int i = 0; i < 40; ++i) {
    const double middle = (low + high) / 2;
    (cubic(x1, x2, middle) < fraction ? low : high) = middle;
  }
  return cubic(y1, y2, high);
}

double AnimationCurve::Spring::valueAt(double fraction) const {
  const double swing = frequency > 0 ? std::sin(frequency * fraction) / frequency : fraction;
  const double distance = std::exp(-decay * fraction) * (std::cos(frequency * fraction) + (decay - velocity) * swing);
  return 1 - distance;
}

}  // namespace corvane
