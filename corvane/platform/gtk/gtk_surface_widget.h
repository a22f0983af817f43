/// The widget classes of a surface: the surface's own, and that of the web views on it.
#pragma once

#include <gtk/gtk.h>

#include "corvane/platform/geometry/geometry.h"

namespace corvane::gtk {

/// What the toolkit asks about a surface. Points are in the widget's coordinates.
///
/// Ownership: whoever makes the widget; it leaves the widget before it ends.
/// Threads:   main thread only.
class SurfaceWidgetClient {
 public:
  virtual ~SurfaceWidgetClient() = default;
  virtual void allocate(CGSize size) = 0;
  virtual void draw(GtkSnapshot* snapshot) = 0;
  /// Whether any of our views takes touches at a point; where none does, the widgets under the surface get them.
  virtual bool takesTouchAt(CGPoint point) = 0;
  /// Whether the view behind a child of the widget is the one that takes touches at a point.
  virtual bool takesTouchAt(CGPoint point, GtkWidget* child) = 0;
};

/// A new widget with a floating reference.
[[nodiscard]] GtkWidget* makeSurfaceWidget(SurfaceWidgetClient& client);
/// Releases the children and of the client; the widget shows nothing any more.
void endSurfaceWidget(GtkWidget* widget);

/// A web view that, on a surface, can be touched only where the tree of views has it in front.
[[nodiscard]] GType surfaceWebViewType();

}  // namespace corvane::gtk
