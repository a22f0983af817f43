#include "corvane/platform/gtk/gtk_surface_drawing.h"

#include <vector>

#include "corvane/platform/engine/window_drawing.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_transform.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::gtk {

namespace {

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
      GskRoundedRect rounded;
      gsk_rounded_rect_init_from_rect(&rounded, &rect, static_cast<float>(radius));
      gtk_snapshot_push_rounded_clip(snapshot_, &rounded);
    } else {
      gtk_snapshot_push_clip(snapshot_, &rect);
    }
  }

  void endClip() override { gtk_snapshot_pop(snapshot_); }

  void fill(const CGRect& filled, const UIColor& color) override {
    const GdkRGBA rgba{static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue),
                       static_cast<float>(color.alpha)};
    const graphene_rect_t rect = makeGrapheneRect(filled);
    gtk_snapshot_append_color(snapshot_, &rgba, &rect);
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
