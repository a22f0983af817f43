#include "corvane/platform/gtk/gtk_screenshot.h"

#include <gtk/gtk.h>

#include "corvane/platform/gtk/gobject_handle.h"

namespace corvane::gtk {

namespace {

using RenderNodeHandle = CHandle<GskRenderNode, gsk_render_node_unref>;

}  // namespace

bool saveScreenshot(GtkWidget* widget, const std::filesystem::path& file) {
  GtkNative* native = gtk_widget_get_native(widget);
  GskRenderer* renderer = native != nullptr ? gtk_native_get_renderer(native) : nullptr;
  const int width = gtk_widget_get_width(widget);
  const int height = gtk_widget_get_height(widget);
  if (renderer == nullptr || width <= 0 || height <= 0) return false;

  const auto scale = static_cast<float>(gtk_widget_get_scale_factor(widget));
  GtkSnapshot* snapshot = gtk_snapshot_new();
  gtk_snapshot_scale(snapshot, scale, scale);
  const auto paintable = GObjectHandle<GdkPaintable>::adopt(gtk_widget_paintable_new(widget));
  gdk_paintable_snapshot(paintable.get(), snapshot, width, height);
  const RenderNodeHandle node(gtk_snapshot_free_to_node(snapshot));
  if (node == nullptr) return false;

  const graphene_rect_t area{{0, 0}, {static_cast<float>(width) * scale, static_cast<float>(height) * scale}};
  const auto picture = GObjectHandle<GdkTexture>::adopt(gsk_renderer_render_texture(renderer, node.get(), &area));
  return gdk_texture_save_to_png(picture.get(), file.c_str()) != FALSE;
}

}  // namespace corvane::gtk
