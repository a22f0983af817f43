/// How views follow the size of their superview.
#pragma once

#include <cstdint>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

/// Which of a view's lengths follow when its superview is resized. Lengths of the same axis share the change in
/// proportion to what they are.
enum class UIViewAutoresizing : std::uint8_t {
  none = 0,
  flexibleLeftMargin = 1 << 0,
  flexibleWidth = 1 << 1,
  flexibleRightMargin = 1 << 2,
  flexibleTopMargin = 1 << 3,
  flexibleHeight = 1 << 4,
  flexibleBottomMargin = 1 << 5,
};

constexpr UIViewAutoresizing operator|(UIViewAutoresizing left, UIViewAutoresizing right) noexcept {
  return static_cast<UIViewAutoresizing>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}
constexpr bool contains(UIViewAutoresizing mask, UIViewAutoresizing part) noexcept {
  return (static_cast<unsigned>(mask) & static_cast<unsigned>(part)) != 0;
}

/// The frame that a view of this mask gets when its superview's size changes. Lengths that would be negative are 0.
[[nodiscard]] CORVANE_EXPORT CGRect autoresizedFrame(CGRect frame, UIViewAutoresizing mask, CGSize superviewFrom,
                                                     CGSize superviewTo);

/// The last frame before a length had to be 0, and the one that it became.
struct AutoresizingOrigin {
  CGRect frame;
  CGSize superviewSize;
  CGRect result;
};

}  // namespace corvane
