/// Our transforms in the toolkit's form.
#pragma once

#include <gsk/gsk.h>

#include "corvane/platform/geometry/geometry.h"

namespace corvane::gtk {

/// The same mapping; the caller owns it. Null, the toolkit's identity, for ours.
[[nodiscard]] GskTransform* makeGskTransform(const CGAffineTransform& transform);

}  // namespace corvane::gtk
