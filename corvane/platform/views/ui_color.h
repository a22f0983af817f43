/// Colours of views.
#pragma once

#include "corvane/export.h"

namespace corvane {

/// A colour in sRGB, each part from 0 to 1.
struct UIColor {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  bool operator==(const UIColor&) const = default;
};

}  // namespace corvane
