#include "corvane/platform/gtk/gtk_transform.h"

#include <cmath>
#include <numbers>

namespace corvane::gtk {

namespace {

CGFloat determinantOf(const CGAffineTransform& transform) {
  return transform.a * transform.d - transform.b * transform.c;
}

float degrees(CGFloat radians) { return static_cast<float>(radians * 180 / std::numbers::pi); }

}  // namespace

// The toolkit knows how a transform came about. What is built from moves, turns and scales it draws exactly, and in
// software at all. A matrix might be anything to it, so the mapping is taken apart instead.
GskTransform* makeGskTransform(const CGAffineTransform& transform) {
  if (transform.isIdentity()) return nullptr;
  const graphene_point_t offset{static_cast<float>(transform.tx), static_cast<float>(transform.ty)};
  GskTransform* made = gsk_transform_translate(nullptr, &offset);
  CGFloat scaleX = transform.a;
  CGFloat scaleY = transform.d;
  if (transform.b != 0 || transform.c != 0) {
    // Turned so that the x axis lies where the mapping puts it, what is left of the y axis is a skew and a scale.
    scaleX = std::hypot(transform.a, transform.b);
    scaleY = determinantOf(transform) / scaleX;
    const CGFloat skew = (transform.a * transform.c + transform.b * transform.d) / scaleX;
    made = gsk_transform_rotate(made, degrees(std::atan2(transform.b, transform.a)));
    if (skew != 0) made = gsk_transform_skew(made, degrees(std::atan(skew / scaleY)), 0);
  }
  if (scaleX == 1 && scaleY == 1) return made;
  return gsk_transform_scale(made, static_cast<float>(scaleX), static_cast<float>(scaleY));
}

graphene_rect_t makeGrapheneRect(const CGRect& rect) {
  return {{static_cast<float>(rect.origin.x), static_cast<float>(rect.origin.y)},
          {static_cast<float>(rect.size.width), static_cast<float>(rect.size.height)}};
}

}  // namespace corvane::gtk
