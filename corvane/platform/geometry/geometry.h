/// Points, sizes, rectangles and affine transforms, in 64-bit floats.
#pragma once

namespace corvane {

using CGFloat = double;

struct CGPoint {
  CGFloat x = 0;
  CGFloat y = 0;
  bool operator==(const CGPoint&) const = default;
};

struct CGSize {
  CGFloat width = 0;
  CGFloat height = 0;
  bool operator==(const CGSize&) const = default;
};

struct CGRect {
  CGPoint origin;
  CGSize size;

  [[nodiscard]] CGFloat minX() const noexcept { return origin.x; }
  [[nodiscard]] CGFloat minY() const noexcept { return origin.y; }
  [[nodiscard]] CGFloat midX() const noexcept { return origin.x + size.width / 2; }
  [[nodiscard]] CGFloat midY() const noexcept { return origin.y + size.height / 2; }
  [[nodiscard]] CGFloat maxX() const noexcept { return origin.x + size.width; }
  [[nodiscard]] CGFloat maxY() const noexcept { return origin.y + size.height; }
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
  bool operator==(const CGAffineTransform&) const = default;
};

}  // namespace corvane
