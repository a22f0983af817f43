/// Our geometry in the toolkit's form.
#pragma once

#include <gsk/gsk.h>

#include "corvane/platform/geometry/geometry.h"

namespace corvane::gtk {

/// The same mapping; the caller owns it. Null, the toolkit's identity, for ours. The mapping must be drawable.
[[nodiscard]] GskTransform* makeGskTransform(const CGAffineTransform& transform);
[[nodiscard]] graphene_rect_t makeGrapheneRect(const CGRect& rect);

}  // namespace corvane::gtk
