#include "corvane/platform/gtk/gtk_surface_drawing.h"

#include <algorithm>
#include <cmath>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_transform.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::gtk {

namespace {

using TransformHandle = CHandle<GskTransform, gsk_transform_unref>;

/// What the window's own coordinates are on its surface.
CGAffineTransform transformOfWindow(const UIWindow& window, RunLoop::Time time) {
  const CGPoint origin = window.presentation(time).bounds.origin;
  return CGAffineTransform::makeTranslation(-origin.x, -origin.y);
}

CGFloat stretch(CGFloat shown, CGFloat own) {
  // Sizes that were calculated differ in their last digits; stretched by those, pictures would lose their sharpness.
  constexpr CGFloat unnoticeable = 1e-3;
  return own > 0 && std::abs(shown - own) > unnoticeable ? shown / own : 1;
}

/// Maps the picture of a web view to the view's own coordinates.
CGAffineTransform transformOfPage(const UIView& view, const CGRect& shown) {
  const CGSize own = view.bounds().size;
  return CGAffineTransform::makeScale(stretch(shown.size.width, own.width), stretch(shown.size.height, own.height))
      .concatenated(CGAffineTransform::makeTranslation(shown.origin.x, shown.origin.y));
}

void collectPlacements(const UIView& view, const UIViewPresentation& shown, const CGAffineTransform& transform,
                       RunLoop::Time time, std::vector<Placement>& placements) {
  if (view.isHidden() || !isDrawable(transform)) return;
  if (GtkWebEngine* engine = engineOf(view)) {
    const CGAffineTransform onSurface = transformOfPage(view, shown.bounds).concatenated(transform);
    if (isDrawable(onSurface)) placements.push_back({engine, view.bounds().size, onSurface});
  }
  for (const auto& subview : view.subviews()) {
    const UIViewPresentation inner = subview->presentation(time);
    collectPlacements(*subview, inner, inner.transformToSuperview().concatenated(transform), time, placements);
  }
}

class Drawing {
 public:
  Drawing(GtkSnapshot* snapshot, GtkWidget* surface, RunLoop::Time time)
      : snapshot_(snapshot), surface_(surface), time_(time) {}

  /// `outer` maps the superview's coordinates to the surface's, `inner` the view's own to its superview's.
  void draw(const UIView& view, const UIViewPresentation& shown, const CGAffineTransform& inner,
            const CGAffineTransform& outer) {
    const CGAffineTransform transform = inner.concatenated(outer);
    if (view.isHidden() || !(shown.alpha > 0) || !isDrawable(inner) || !isDrawable(transform)) return;
    gtk_snapshot_save(snapshot_);
    apply(inner);
    const bool isFaint = shown.alpha < 1;
    if (isFaint) gtk_snapshot_push_opacity(snapshot_, shown.alpha);
    drawBackground(view, shown);
    const bool isClipped = view.clipsToBounds();
    if (!isClipped || pushClip(shown)) {
      drawPage(view, shown, transform);
      for (const auto& subview : view.subviews()) {
        const UIViewPresentation shownInside = subview->presentation(time_);
        draw(*subview, shownInside, shownInside.transformToSuperview(), transform);
      }
      if (isClipped) gtk_snapshot_pop(snapshot_);
    }
    if (isFaint) gtk_snapshot_pop(snapshot_);
    gtk_snapshot_restore(snapshot_);
  }

 private:
  void apply(const CGAffineTransform& transform) const {
    const TransformHandle made(makeGskTransform(transform));
    gtk_snapshot_transform(snapshot_, made.get());
  }

  /// False, and no clip, where it would leave nothing.
  [[nodiscard]] bool pushClip(const UIViewPresentation& shown) const {
    if (!isDrawable(shown.bounds)) return false;
    const graphene_rect_t rect = makeGrapheneRect(shown.bounds);
    const CGFloat radius = std::min({shown.cornerRadius, shown.bounds.size.width / 2, shown.bounds.size.height / 2});
    if (radius > 0) {
      GskRoundedRect rounded;
      gsk_rounded_rect_init_from_rect(&rounded, &rect, static_cast<float>(radius));
      gtk_snapshot_push_rounded_clip(snapshot_, &rounded);
    } else {
      gtk_snapshot_push_clip(snapshot_, &rect);
    }
    return true;
  }

  void drawBackground(const UIView& view, const UIViewPresentation& shown) const {
    if (!view.backgroundColor() || !pushClip(shown)) return;
    const UIColor& color = *view.backgroundColor();
    const GdkRGBA rgba{static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue),
                       static_cast<float>(color.alpha)};
    const graphene_rect_t rect = makeGrapheneRect(shown.bounds);
    gtk_snapshot_append_color(snapshot_, &rgba, &rect);
    gtk_snapshot_pop(snapshot_);
  }

  void drawPage(const UIView& view, const UIViewPresentation& shown, const CGAffineTransform& transform) const {
    const GtkWebEngine* engine = engineOf(view);
    if (engine == nullptr || gtk_widget_get_parent(engine->widget()) != surface_) return;
    const CGAffineTransform onSurface = transformOfPage(view, shown.bounds).concatenated(transform);
    if (!isDrawable(onSurface)) return;
    // The toolkit applies the child's place on the surface by itself, so ours is taken back.
    const TransformHandle back(gsk_transform_invert(makeGskTransform(transform)));
    gtk_snapshot_save(snapshot_);
    gtk_snapshot_transform(snapshot_, back.get());
    gtk_widget_snapshot_child(surface_, engine->widget(), snapshot_);
    gtk_snapshot_restore(snapshot_);
  }

  GtkSnapshot* snapshot_;
  GtkWidget* surface_;
  RunLoop::Time time_;
};

}  // namespace

GtkWebEngine* engineOf(const UIView& view) {
  const auto* webView = dynamic_cast<const WKWebView*>(&view);
  // Another backend's engine has no widget of ours.
  return webView != nullptr ? dynamic_cast<GtkWebEngine*>(&webView->engine()) : nullptr;
}

std::vector<Placement> placementsIn(const UIWindow& window, RunLoop::Time time) {
  std::vector<Placement> placements;
  collectPlacements(window, window.presentation(time), transformOfWindow(window, time), time, placements);
  return placements;
}

void drawWindow(GtkSnapshot* snapshot, GtkWidget* surface, const UIWindow& window, RunLoop::Time time) {
  Drawing(snapshot, surface, time).draw(window, window.presentation(time), transformOfWindow(window, time), {});
}

}  // namespace corvane::gtk
