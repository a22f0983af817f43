/// How a host app wants its agent view to float.
#pragma once

#include <memory>
#include <optional>

#include "corvane/minimized/minimized_origin.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// What the properties of an agent view say about its floating window; they are described there.
struct MinimizedSettings {
  MinimizedOrigin origin = MinimizedOrigin::topLeft();
  std::optional<CGSize> size;
  std::shared_ptr<UIView> superview;
  bool tapToMaximize = false;
};

}  // namespace corvane
