#include "corvane/platform/gtk/gtk_surface_drawing.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

#include "corvane/platform/engine/window_drawing.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_text.h"
#include "corvane/platform/gtk/gtk_transform.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::gtk {

namespace {

GdkRGBA toRgba(const UIColor& color) {
  return {static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue),
          static_cast<float>(color.alpha)};
}

GskRoundedRect makeRoundedRect(const CGRect& rect, CGFloat radius) {
  const graphene_rect_t box = makeGrapheneRect(rect);
  GskRoundedRect rounded;
  gsk_rounded_rect_init_from_rect(&rounded, &box, static_cast<float>(radius));
  return rounded;
}

/// The picture of a view's file, which the view keeps; without one where it cannot be read.
struct Picture {
  GObjectHandle<GdkTexture> texture;
};

const Picture& pictureOf(const UIImageView& view) {
  std::shared_ptr<void>& kept = view.picture();
  if (kept == nullptr) {
    auto picture = std::make_shared<Picture>();
    GError* error = nullptr;
    picture->texture = GObjectHandle<GdkTexture>::adopt(gdk_texture_new_from_filename(view.file().c_str(), &error));
    g_clear_error(&error);
    kept = std::move(picture);
  }
  return *static_cast<const Picture*>(kept.get());
}

using TransformHandle = CHandle<GskTransform, gsk_transform_unref>;

class SnapshotCanvas final : public engine::Canvas {
 public:
  SnapshotCanvas(GtkSnapshot* snapshot, GtkWidget* surface) : snapshot_(snapshot), surface_(surface) {}

  void beginView(const CGAffineTransform& transform, CGFloat alpha) override {
    gtk_snapshot_save(snapshot_);
    const TransformHandle made(makeGskTransform(transform));
    gtk_snapshot_transform(snapshot_, made.get());
    areFaint_.push_back(alpha < 1);
    if (alpha < 1) gtk_snapshot_push_opacity(snapshot_, alpha);
  }

  void endView() override {
    if (areFaint_.back()) gtk_snapshot_pop(snapshot_);
    areFaint_.pop_back();
    gtk_snapshot_restore(snapshot_);
  }

  void beginClip(const CGRect& clip, CGFloat radius) override {
    const graphene_rect_t rect = makeGrapheneRect(clip);
    if (radius > 0) {
      const GskRoundedRect rounded = makeRoundedRect(clip, radius);
      gtk_snapshot_push_rounded_clip(snapshot_, &rounded);
    } else {
      gtk_snapshot_push_clip(snapshot_, &rect);
    }
  }

  void endClip() override { gtk_snapshot_pop(snapshot_); }

  void fill(const CGRect& filled, const UIColor& color) override {
    const GdkRGBA rgba = toRgba(color);
    const graphene_rect_t rect = makeGrapheneRect(filled);
    gtk_snapshot_append_color(snapshot_, &rgba, &rect);
  }

  void drawBorder(const CGRect& rect, CGFloat radius, CGFloat width, const UIColor& color) override {
    const GskRoundedRect outline = makeRoundedRect(rect, radius);
    const auto thickness = static_cast<float>(width);
    const GdkRGBA rgba = toRgba(color);
    const std::array widths{thickness, thickness, thickness, thickness};
    const std::array colors{rgba, rgba, rgba, rgba};
    gtk_snapshot_append_border(snapshot_, &outline, widths.data(), colors.data());
  }

  void drawShadow(const CGRect& rect, CGFloat radius, const UIViewDecoration& shadow) override {
    const GskRoundedRect outline = makeRoundedRect(rect, radius);
    const GdkRGBA rgba = toRgba(shadow.shadowColor);
    gtk_snapshot_append_outset_shadow(snapshot_, &outline, &rgba, static_cast<float>(shadow.shadowOffset.x),
                                      static_cast<float>(shadow.shadowOffset.y), 0,
                                      static_cast<float>(shadow.shadowRadius));
  }

  void drawText(const UILabel& label, const CGRect& rect) override {
    const auto layout = makeTextLayout(label.text(), label.font(), rect.size.width, label.alignment());
    const graphene_rect_t box = makeGrapheneRect(rect);
    const graphene_point_t corner{static_cast<float>(rect.minX()), static_cast<float>(rect.minY())};
    const GdkRGBA rgba = toRgba(label.color());
    gtk_snapshot_push_clip(snapshot_, &box);
    gtk_snapshot_save(snapshot_);
    gtk_snapshot_translate(snapshot_, &corner);
    gtk_snapshot_append_layout(snapshot_, layout.get(), &rgba);
    gtk_snapshot_restore(snapshot_);
    gtk_snapshot_pop(snapshot_);
  }

  void drawImage(const UIImageView& view, const CGRect& rect) override {
    GdkTexture* const texture = pictureOf(view).texture.get();
    if (texture == nullptr) return;
    const CGSize size{static_cast<CGFloat>(gdk_texture_get_width(texture)),
                      static_cast<CGFloat>(gdk_texture_get_height(texture))};
    const graphene_rect_t box = makeGrapheneRect(engine::fittedInto(rect, size));
    gtk_snapshot_append_texture(snapshot_, texture, &box);
  }

  void drawPage(const engine::Placement& page, const CGAffineTransform& inView) override {
    // Another backend's engine has no widget of ours.
    const auto* const engine = dynamic_cast<const GtkWebEngine*>(page.engine);
    if (engine == nullptr || gtk_widget_get_parent(engine->widget()) != surface_) return;
    // The toolkit applies the child's place on the surface by itself, so that is taken back first.
    const TransformHandle own(makeGskTransform(inView));
    const TransformHandle back(gsk_transform_invert(makeGskTransform(page.transform)));
    gtk_snapshot_save(snapshot_);
    gtk_snapshot_transform(snapshot_, own.get());
    gtk_snapshot_transform(snapshot_, back.get());
    gtk_widget_snapshot_child(surface_, engine->widget(), snapshot_);
    gtk_snapshot_restore(snapshot_);
  }

 private:
  GtkSnapshot* snapshot_;
  GtkWidget* surface_;
  std::vector<bool> areFaint_;
};

}  // namespace

GtkWebEngine* engineOf(const UIView& view) {
  const auto* webView = dynamic_cast<const WKWebView*>(&view);
  // Another backend's engine has no widget of ours.
  return webView != nullptr ? dynamic_cast<GtkWebEngine*>(&webView->engine()) : nullptr;
}

void drawWindow(GtkSnapshot* snapshot, GtkWidget* surface, const UIWindow& window, RunLoop::Time time) {
  SnapshotCanvas canvas(snapshot, surface);
  engine::drawWindow(canvas, window, time);
}

}  // namespace corvane::gtk
