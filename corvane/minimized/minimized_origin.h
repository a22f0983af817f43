/// Where a minimized agent view is placed.
#pragma once

#include <utility>
#include <variant>

#include "corvane/export.h"
#include "corvane/platform/foundation/match.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

/// A corner of the container, a little away from its edges, or a point.
class MinimizedOrigin : public SumType<MinimizedOrigin> {
 public:
  /// The upper left corner of the minimized view, in the container's coordinates. It is moved into the container, but
  /// the view may still stick out of it on the right and at the bottom.
  struct Custom {
    CGPoint point;
    bool operator==(const Custom&) const = default;
  };
  /// In the upper left corner.
  struct TopLeft {
    bool operator==(const TopLeft&) const = default;
  };
  /// In the upper right corner.
  struct TopRight {
    bool operator==(const TopRight&) const = default;
  };
  /// In the lower left corner.
  struct BottomLeft {
    bool operator==(const BottomLeft&) const = default;
  };
  /// In the lower right corner.
  struct BottomRight {
    bool operator==(const BottomRight&) const = default;
  };
  using Value = std::variant<Custom, TopLeft, TopRight, BottomLeft, BottomRight>;

  static MinimizedOrigin custom(CGPoint point) { return MinimizedOrigin(Custom{point}); }
  static MinimizedOrigin topLeft() { return MinimizedOrigin(TopLeft{}); }
  static MinimizedOrigin topRight() { return MinimizedOrigin(TopRight{}); }
  static MinimizedOrigin bottomLeft() { return MinimizedOrigin(BottomLeft{}); }
  static MinimizedOrigin bottomRight() { return MinimizedOrigin(BottomRight{}); }

  [[nodiscard]] const Value& value() const CORVANE_LIFETIMEBOUND { return value_; }
  bool operator==(const MinimizedOrigin&) const = default;

 private:
  explicit MinimizedOrigin(Value value) : value_(value) {}

  Value value_;
};

}  // namespace corvane
