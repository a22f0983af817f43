#include "corvane/platform/gtk/gtk_text.h"

#include <gtk/gtk.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace corvane::gtk {

namespace {

constexpr CGFloat widest = 1 << 20;

using FontHandle = CHandle<PangoFontDescription, pango_font_description_free>;

/// The typeface that the user has chosen for programs.
FontHandle systemFont() {
  char* name = nullptr;
  if (GtkSettings* const settings = gtk_settings_get_default()) {
    g_object_get(settings, "gtk-font-name", &name, nullptr);
  }
  const GTextHandle text(name);
  return FontHandle(pango_font_description_from_string(text ? text.get() : "Sans"));
}

PangoAlignment alignmentOf(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::leading:
      return PANGO_ALIGN_LEFT;
    case TextAlignment::center:
      return PANGO_ALIGN_CENTER;
    case TextAlignment::trailing:
      return PANGO_ALIGN_RIGHT;
  }
  return PANGO_ALIGN_LEFT;
}

}  // namespace

GObjectHandle<PangoLayout> makeTextLayout(std::string_view text, const UIFont& font, CGFloat width,
                                          TextAlignment alignment) {
  const auto context =
      GObjectHandle<PangoContext>::adopt(pango_font_map_create_context(pango_cairo_font_map_get_default()));
  auto layout = GObjectHandle<PangoLayout>::adopt(pango_layout_new(context.get()));
  const FontHandle description = systemFont();
  pango_font_description_set_absolute_size(description.get(), std::clamp(font.size, 1.0, widest) * PANGO_SCALE);
  pango_font_description_set_weight(description.get(), font.isBold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_layout_set_font_description(layout.get(), description.get());
  pango_layout_set_alignment(layout.get(), alignmentOf(alignment));
  pango_layout_set_width(layout.get(), static_cast<int>(std::clamp(std::ceil(width), 1.0, widest) * PANGO_SCALE));
  const GTextHandle valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
  pango_layout_set_text(layout.get(), valid.get(), -1);
  return layout;
}

CGSize GtkTextMeasurer::measure(std::string_view text, const UIFont& font, CGFloat width) const {
  const auto layout = makeTextLayout(text, font, width, TextAlignment::leading);
  PangoRectangle box{};
  pango_layout_get_extents(layout.get(), nullptr, &box);
  return {std::ceil(pango_units_to_double(box.width)), std::ceil(pango_units_to_double(box.height))};
}

}  // namespace corvane::gtk
