#include "corvane/platform/gtk/gtk_surface_widget.h"

#include <webkit/webkit.h>

#include "corvane/platform/gtk/gobject_handle.h"

namespace corvane::gtk {

namespace {

/// The widget behind a surface; the client is null once the surface has ended.
struct SurfaceWidget {
  GtkWidget parent;
  SurfaceWidgetClient* client;
};

struct SurfaceWidgetClass {
  GtkWidgetClass parent;
};

template <class Class>
const Class& classOf(GType type) {
  return *static_cast<const Class*>(g_type_class_peek(type));
}

void releaseChildren(GtkWidget* widget) {
  while (GtkWidget* child = gtk_widget_get_first_child(widget)) gtk_widget_unparent(child);
}

void dispose(GObject* object) noexcept {
  releaseChildren(objectCast<GtkWidget>(object));
  classOf<GObjectClass>(GTK_TYPE_WIDGET).dispose(object);
}

/// The views are as large as the widget becomes, whatever that is.
void measure(GtkWidget*, GtkOrientation, int, int* minimum, int* natural, int*, int*) noexcept {
  *minimum = 1;
  *natural = 1;
}

void allocateSize(GtkWidget* widget, int width, int height, int) noexcept {
  SurfaceWidgetClient* client = objectCast<SurfaceWidget>(widget)->client;
  if (client != nullptr) client->allocate({static_cast<CGFloat>(width), static_cast<CGFloat>(height)});
}

void drawSnapshot(GtkWidget* widget, GtkSnapshot* snapshot) noexcept {
  SurfaceWidgetClient* client = objectCast<SurfaceWidget>(widget)->client;
  if (client != nullptr) client->draw(snapshot);
}

gboolean containsPoint(GtkWidget* widget, double x, double y) noexcept {
  SurfaceWidgetClient* client = objectCast<SurfaceWidget>(widget)->client;
  return client != nullptr && client->takesTouchAt({x, y});
}

void initializeSurfaceClass(gpointer surfaceClass, gpointer) noexcept {
  static_cast<GObjectClass*>(surfaceClass)->dispose = dispose;
  auto* widgetClass = static_cast<GtkWidgetClass*>(surfaceClass);
  widgetClass->measure = measure;
  widgetClass->size_allocate = allocateSize;
  widgetClass->snapshot = drawSnapshot;
  widgetClass->contains = containsPoint;
  gtk_widget_class_set_css_name(widgetClass, "corvane-surface");
  gtk_widget_class_set_accessible_role(widgetClass, GTK_ACCESSIBLE_ROLE_GROUP);
}

GType surfaceWidgetType() {
  static const GType type =
      g_type_register_static_simple(GTK_TYPE_WIDGET, "CorvaneSurface", sizeof(SurfaceWidgetClass),
                                    initializeSurfaceClass, sizeof(SurfaceWidget), nullptr, static_cast<GTypeFlags>(0));
  return type;
}

/// The toolkit knows nothing of corners, clips and the order of our views, so it asks.
gboolean webViewContainsPoint(GtkWidget* widget, double x, double y) noexcept {
  if (classOf<GtkWidgetClass>(WEBKIT_TYPE_WEB_VIEW).contains(widget, x, y) == FALSE) return FALSE;
  GtkWidget* parent = gtk_widget_get_parent(widget);
  if (parent == nullptr || G_OBJECT_TYPE(parent) != surfaceWidgetType()) return TRUE;
  SurfaceWidgetClient* client = objectCast<SurfaceWidget>(parent)->client;
  const graphene_point_t own{static_cast<float>(x), static_cast<float>(y)};
  graphene_point_t point;
  if (client == nullptr || !gtk_widget_compute_point(widget, parent, &own, &point)) return FALSE;
  return client->takesTouchAt({point.x, point.y}, widget);
}

void initializeWebViewClass(gpointer webViewClass, gpointer) noexcept {
  static_cast<GtkWidgetClass*>(webViewClass)->contains = webViewContainsPoint;
}

}  // namespace

GtkWidget* makeSurfaceWidget(SurfaceWidgetClient& client) {
  auto* widget = objectCast<GtkWidget>(g_object_new(surfaceWidgetType(), nullptr));
  objectCast<SurfaceWidget>(widget)->client = &client;
  gtk_accessible_update_property(GTK_ACCESSIBLE(widget), GTK_ACCESSIBLE_PROPERTY_LABEL, "Call", -1);
  gtk_widget_set_hexpand(widget, TRUE);
  gtk_widget_set_vexpand(widget, TRUE);
  gtk_widget_set_overflow(widget, GTK_OVERFLOW_HIDDEN);
  return widget;
}

void endSurfaceWidget(GtkWidget* widget) {
  objectCast<SurfaceWidget>(widget)->client = nullptr;
  releaseChildren(widget);
}

GType surfaceWebViewType() {
  static const GType type =
      g_type_register_static_simple(WEBKIT_TYPE_WEB_VIEW, "CorvaneWebView", sizeof(WebKitWebViewClass),
                                    initializeWebViewClass, sizeof(WebKitWebView), nullptr, static_cast<GTypeFlags>(0));
  return type;
}

}  // namespace corvane::gtk
