/// Where a minimized view stands, how large it is, and where it comes to rest after a drag.
#pragma once

#include <optional>

#include "corvane/minimized/minimized_origin.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

/// The corner radius of a minimized view, in its own coordinates.
inline constexpr CGFloat minimizedCornerRadius = 14.0;

/// A size of which neither length is below 30, nor anything that is no length at all.
[[nodiscard]] CGSize atLeastMinimizedSize(CGSize size);

struct MinimizedShape {
  CGSize size;
  CGAffineTransform transform;
};

/// How a view of this frame is minimized: to the wanted size, or to a third of its own but at least 30 each way.
[[nodiscard]] MinimizedShape minimizedShape(CGRect originalFrame, std::optional<CGSize> wanted);

/// The upper left corner of a minimized view of this size in a container. Without a container there is only the corner
/// that lies at the same place in each.
[[nodiscard]] CGPoint minimizedPosition(const MinimizedOrigin& origin, CGSize size, std::optional<CGSize> container);

enum class HorizontalSide { left, right };

/// Where a view goes when it is released.
struct SnapTarget {
  HorizontalSide side;
  CGFloat centerY;
};

[[nodiscard]] SnapTarget snapTarget(CGRect frame, CGFloat centerY, CGSize container);
/// The centre of a view of this width that lies at a side of its container.
[[nodiscard]] CGFloat snappedCenterX(HorizontalSide side, CGFloat width, CGFloat containerWidth);

}  // namespace corvane
