/// Our transforms in the toolkit's form.
#pragma once

#include <gsk/gsk.h>

#include "corvane/platform/geometry/geometry.h"

namespace corvane::gtk {

/// Whether the mapping leaves nothing to see.
[[nodiscard]] bool isCollapsed(const CGAffineTransform& transform);

/// The same mapping; the caller owns it. Null, the toolkit's identity, for ours. The mapping must not be collapsed.
[[nodiscard]] GskTransform* makeGskTransform(const CGAffineTransform& transform);

}  // namespace corvane::gtk
