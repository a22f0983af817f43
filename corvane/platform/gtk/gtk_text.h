/// Texts as the toolkit writes them.
#pragma once

#include <pango/pango.h>

#include <string_view>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/views/text_measurer.h"

namespace corvane::gtk {

/// A text with its lines broken at a width, in points.
[[nodiscard]] GObjectHandle<PangoLayout> makeTextLayout(std::string_view text, const UIFont& font, CGFloat width,
                                                        TextAlignment alignment);

class GtkTextMeasurer final : public TextMeasurer {
 public:
  [[nodiscard]] CGSize measure(std::string_view text, const UIFont& font, CGFloat width) const override;
};

}  // namespace corvane::gtk
