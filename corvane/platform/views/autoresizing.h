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

/// Where following its superview has brought a view, and from where. Steps are counted from there, so that what has
/// become too small for them comes back with the superview's size.
struct AutoresizingOrigin {
  CGRect frame;
  CGSize superviewSize;
  UIViewAutoresizing mask;
  /// What the view and its superview were after the last step.
  CGRect lastFrame;
  CGSize lastSuperviewSize;
};

}  // namespace corvane
