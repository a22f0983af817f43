#include "corvane/minimized/minimized_geometry.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

constexpr CGFloat minimizedScaleFactor = 0.33;
constexpr CGFloat minimizedMinWidth = 30.0;
constexpr CGFloat minimizedMinHeight = 30.0;
constexpr CGFloat minimizedMargin = 5.0;

CGFloat atLeast(CGFloat minimum, CGFloat length) { return std::isfinite(length) ? std::max(length, minimum) : minimum; }

/// A length of nothing has no scale that makes it longer, nor has one without an end a scale that leaves something of
/// it. They then take the new length as it is.
CGFloat scaleBetween(CGFloat from, CGFloat to) {
  const CGFloat scale = to / from;
  return std::isfinite(scale) && scale > 0 ? scale : 1;
}

}  // namespace

CGSize atLeastMinimizedSize(CGSize size) {
  return {atLeast(minimizedMinWidth, size.width), atLeast(minimizedMinHeight, size.height)};
}

MinimizedShape minimizedShape(CGRect originalFrame, std::optional<CGSize> wanted) {
  const CGSize original = originalFrame.size;
  if (wanted) {
    return {*wanted, CGAffineTransform::makeScale(scaleBetween(original.width, wanted->width),
                                                  scaleBetween(original.height, wanted->height))};
  }
  // A view that would become too small is larger than its scale says.
  return {atLeastMinimizedSize({minimizedScaleFactor * original.width, minimizedScaleFactor * original.height}),
          CGAffineTransform::makeScale(minimizedScaleFactor, minimizedScaleFactor)};
}

CGPoint minimizedPosition(const MinimizedOrigin& origin, CGSize size, std::optional<CGSize> container) {
  if (!container) return {minimizedMargin, minimizedMargin};
  const CGFloat right = container->width - size.width - minimizedMargin;
  const CGFloat bottom = container->height - size.height - minimizedMargin;
  return origin.match(
      [&](const MinimizedOrigin::Custom& custom) {
        return CGPoint{std::fmin(std::fmax(custom.point.x, 0), container->width),
                       std::fmin(std::fmax(custom.point.y, 0), container->height)};
      },
      [](const MinimizedOrigin::TopLeft&) { return CGPoint{minimizedMargin, minimizedMargin}; },
      [&](const MinimizedOrigin::TopRight&) { return CGPoint{right, minimizedMargin}; },
      [&](const MinimizedOrigin::BottomLeft&) { return CGPoint{minimizedMargin, bottom}; },
      [&](const MinimizedOrigin::BottomRight&) { return CGPoint{right, bottom}; });
}

SnapTarget snapTarget(CGRect frame, CGFloat centerY, CGSize container) {
  const CGFloat highest = frame.size.height / 2;
  const CGFloat lowest = container.height - frame.size.height / 2;
  // A view that is higher than its container ends at its bottom.
  const CGFloat y = centerY > lowest ? lowest : centerY < highest ? highest : centerY;
  return {container.width / 2 <= frame.midX() ? HorizontalSide::right : HorizontalSide::left, y};
}

CGFloat snappedCenterX(HorizontalSide side, CGFloat width, CGFloat containerWidth) {
  return side == HorizontalSide::left ? width / 2 : containerWidth - width / 2;
}

}  // namespace corvane
