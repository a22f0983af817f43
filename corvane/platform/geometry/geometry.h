/// Points, sizes, rectangles and affine transforms, in 64-bit floats.
#pragma once

#include <cmath>
#include <optional>

#include "corvane/export.h"

namespace corvane {

using CGFloat = double;

/// A place; x grows to the right and y downwards.
struct CGPoint {
  CGFloat x = 0;
  CGFloat y = 0;
  bool operator==(const CGPoint&) const = default;
};

/// A width and a height.
struct CGSize {
  CGFloat width = 0;
  CGFloat height = 0;
  bool operator==(const CGSize&) const = default;
};

/// A rectangle: its upper left corner and its size.
struct CGRect {
  CGPoint origin;
  CGSize size;

  [[nodiscard]] CGFloat minX() const noexcept { return origin.x; }
  [[nodiscard]] CGFloat minY() const noexcept { return origin.y; }
  [[nodiscard]] CGFloat midX() const noexcept { return origin.x + size.width / 2; }
  [[nodiscard]] CGFloat midY() const noexcept { return origin.y + size.height / 2; }
  [[nodiscard]] CGFloat maxX() const noexcept { return origin.x + size.width; }
  [[nodiscard]] CGFloat maxY() const noexcept { return origin.y + size.height; }
  /// The left and top edges belong to the rectangle, the right and bottom ones do not.
  [[nodiscard]] bool contains(CGPoint point) const noexcept {
    return point.x >= minX() && point.x < maxX() && point.y >= minY() && point.y < maxY();
  }
  bool operator==(const CGRect&) const = default;
};

/// The mapping x' = a·x + c·y + tx, y' = b·x + d·y + ty.
struct CGAffineTransform {
  CGFloat a = 1;
  CGFloat b = 0;
  CGFloat c = 0;
  CGFloat d = 1;
  CGFloat tx = 0;
  CGFloat ty = 0;

  static constexpr CGAffineTransform makeScale(CGFloat x, CGFloat y) noexcept { return {.a = x, .d = y}; }
  static constexpr CGAffineTransform makeTranslation(CGFloat x, CGFloat y) noexcept { return {.tx = x, .ty = y}; }

  [[nodiscard]] bool isIdentity() const noexcept { return *this == CGAffineTransform{}; }
  [[nodiscard]] constexpr CGPoint apply(CGPoint point) const noexcept {
    return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
  }
  /// This mapping first, then the other.
  [[nodiscard]] constexpr CGAffineTransform concatenated(const CGAffineTransform& then) const noexcept {
    return {.a = then.a * a + then.c * b,
            .b = then.b * a + then.d * b,
            .c = then.a * c + then.c * d,
            .d = then.b * c + then.d * d,
            .tx = then.a * tx + then.c * ty + then.tx,
            .ty = then.b * tx + then.d * ty + then.ty};
  }
  /// The mapping back; none where this one leaves nothing of the plane, or is not finite.
  [[nodiscard]] std::optional<CGAffineTransform> inverted() const noexcept {
    const CGFloat determinant = a * d - b * c;
    if (determinant == 0 || !std::isfinite(1 / determinant)) return std::nullopt;
    return CGAffineTransform{.a = d / determinant,
                             .b = -b / determinant,
                             .c = -c / determinant,
                             .d = a / determinant,
                             .tx = (c * ty - d * tx) / determinant,
                             .ty = (b * tx - a * ty) / determinant};
  }
  bool operator==(const CGAffineTransform&) const = default;
};

}  // namespace corvane
