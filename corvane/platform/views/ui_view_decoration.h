/// What is drawn at the edge of a view.
#pragma once

#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/ui_color.h"

namespace corvane {

/// An edge inside the view's rounded bounds and a shadow around them, in its own coordinates, so that a transform
/// changes how large they look. A width or a radius of 0 is none.
struct UIViewDecoration {
  CGFloat borderWidth = 0;
  UIColor borderColor{};
  /// How far the shadow reaches, fading out. It is seen outside of the view only, also where that is transparent.
  CGFloat shadowRadius = 0;
  CGPoint shadowOffset{};
  UIColor shadowColor{.alpha = 0.3};
  bool operator==(const UIViewDecoration&) const = default;
};

}  // namespace corvane
