#include "corvane/platform/gtk/gtk_surface.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/glib_source.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_transform.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::gtk {

/// What the widget class below may call.
struct SurfaceWidgetAccess {
  static void allocate(Surface& surface, int width, int height) { surface.allocate(width, height); }
};

namespace {

/// The widget behind a surface; the surface is null once it has ended.
struct SurfaceWidget {
  GtkWidget parent;
  Surface* surface;
};

struct SurfaceWidgetClass {
  GtkWidgetClass parent;
};

void releaseChildren(GtkWidget* widget) {
  while (GtkWidget* child = gtk_widget_get_first_child(widget)) gtk_widget_unparent(child);
}

void dispose(GObject* object) noexcept {
  releaseChildren(objectCast<GtkWidget>(object));
  const auto* parentClass = static_cast<GObjectClass*>(g_type_class_peek(GTK_TYPE_WIDGET));
  parentClass->dispose(object);
}

/// The views are as large as the widget becomes, whatever that is.
void measure(GtkWidget*, GtkOrientation, int, int* minimum, int* natural, int*, int*) noexcept {
  *minimum = 1;
  *natural = 1;
}

void allocateSize(GtkWidget* widget, int width, int height, int) noexcept {
  if (Surface* surface = objectCast<SurfaceWidget>(widget)->surface) {
    SurfaceWidgetAccess::allocate(*surface, width, height);
  }
}

void initializeClass(gpointer surfaceClass, gpointer) noexcept {
  static_cast<GObjectClass*>(surfaceClass)->dispose = dispose;
  auto* widgetClass = static_cast<GtkWidgetClass*>(surfaceClass);
  widgetClass->measure = measure;
  widgetClass->size_allocate = allocateSize;
  gtk_widget_class_set_css_name(widgetClass, "corvane-surface");
}

GType surfaceWidgetType() {
  static const GType type =
      g_type_register_static_simple(GTK_TYPE_WIDGET, "CorvaneSurface", sizeof(SurfaceWidgetClass), initializeClass,
                                    sizeof(SurfaceWidget), nullptr, static_cast<GTypeFlags>(0));
  return type;
}

/// A web view of the tree, and how it stands on the surface.
struct Placement {
  GtkWebEngine* engine;
  CGSize size;
  CGAffineTransform transform;
};

/// The web views that can be seen, from the back to the front.
void collectPlacements(const UIView& view, const CGAffineTransform& transform, std::vector<Placement>& placements) {
  if (view.isHidden() || isCollapsed(transform)) return;
  if (const auto* webView = dynamic_cast<const WKWebView*>(&view)) {
    // Another backend's engine has no widget of ours.
    if (auto* engine = dynamic_cast<GtkWebEngine*>(&webView->engine())) {
      const CGPoint origin = view.bounds().origin;
      placements.push_back(
          {engine, view.bounds().size, CGAffineTransform::makeTranslation(origin.x, origin.y).concatenated(transform)});
    }
  }
  for (const auto& subview : view.subviews()) {
    collectPlacements(*subview, subview->transformToSuperview().concatenated(transform), placements);
  }
}

std::vector<Placement> placementsIn(const UIWindow& window) {
  std::vector<Placement> placements;
  const CGPoint origin = window.bounds().origin;
  collectPlacements(window, CGAffineTransform::makeTranslation(-origin.x, -origin.y), placements);
  return placements;
}

int pixels(CGFloat length) { return static_cast<int>(std::clamp(std::round(length), 1.0, 32767.0)); }

}  // namespace

std::shared_ptr<Surface> Surface::create() {
  auto surface = std::make_shared<Surface>(ConstructionKey{});
  surface->adoption_ = std::make_unique<GlibSource>(whileAlive(std::weak_ptr(surface), &Surface::adoptWebViews));
  surface->window_->setHost(surface);
  return surface;
}

Surface::Surface(ConstructionKey)
    : window_(UIWindow::create()),
      widget_(objectCast<GtkWidget>((g_object_ref_sink)(g_object_new(surfaceWidgetType(), nullptr)))) {
  objectCast<SurfaceWidget>(widget_)->surface = this;
  gtk_widget_set_hexpand(widget_, TRUE);
  gtk_widget_set_vexpand(widget_, TRUE);
  gtk_widget_set_overflow(widget_, GTK_OVERFLOW_HIDDEN);
}

Surface::~Surface() {
  objectCast<SurfaceWidget>(widget_)->surface = nullptr;
  releaseChildren(widget_);
  g_object_unref(widget_);
}

GtkWidget* Surface::widget() const { return widget_; }

void Surface::viewTreeDidChange() {
  // The tree changes inside addSubview and its like, and during layout, where the toolkit allows no change of children.
  adoption_->setReadyTime({});
  if (isAllocating_) return;
  gtk_widget_queue_allocate(widget_);
  gtk_widget_queue_draw(widget_);
}

void Surface::adoptWebViews() {
  adoption_->setNeverReady();
  const std::vector<Placement> placements = placementsIn(*window_);
  GtkWidget* behind = nullptr;
  for (const Placement& placement : placements) {
    GtkWidget* child = placement.engine->widget();
    placement.engine->moveTo(widget_);
    if (gtk_widget_get_prev_sibling(child) != behind) gtk_widget_insert_after(child, widget_, behind);
    gtk_widget_set_child_visible(child, TRUE);
    behind = child;
  }
  // What is left in front of them is hidden or has left the window.
  GtkWidget* other = behind != nullptr ? gtk_widget_get_next_sibling(behind) : gtk_widget_get_first_child(widget_);
  for (; other != nullptr; other = gtk_widget_get_next_sibling(other)) gtk_widget_set_child_visible(other, FALSE);
  gtk_widget_queue_allocate(widget_);
  gtk_widget_queue_draw(widget_);
}

void Surface::allocate(int width, int height) {
  const auto alive = shared_from_this();
  isAllocating_ = true;
  const CGRect frame{{}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}};
  if (window_->frame() != frame) window_->setFrame(frame);
  for (const Placement& placement : placementsIn(*window_)) {
    GtkWidget* child = placement.engine->widget();
    // New ones come in with the adoption that their arrival has posted, and are laid out after it.
    if (gtk_widget_get_parent(child) != widget_ || gtk_widget_get_child_visible(child) == FALSE) continue;
    // The toolkit complains about a child that is laid out without having been asked for its size.
    gtk_widget_measure(child, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
    gtk_widget_allocate(child, pixels(placement.size.width), pixels(placement.size.height), -1,
                        makeGskTransform(placement.transform));
  }
  isAllocating_ = false;
}

}  // namespace corvane::gtk
