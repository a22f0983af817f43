/// How a window of views looks on its surface at one moment.
#pragma once

#include <gtk/gtk.h>

#include <vector>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// A web view of the tree, and how it stands on the surface.
struct Placement {
  GtkWebEngine* engine;
  /// For which the page is laid out. A view whose size is animated has its last one at once, and the picture is
  /// stretched until it fits. No page could be laid out anew for each picture.
  CGSize size;
  CGAffineTransform transform;
};

/// The engine behind a view; null for a view that is none of our web views.
[[nodiscard]] GtkWebEngine* engineOf(const UIView& view);

/// The web views that can be seen, from the back to the front.
[[nodiscard]] std::vector<Placement> placementsIn(const UIWindow& window, RunLoop::Time time);

/// Draws the window and, in their places among its views, the children of the surface widget.
void drawWindow(GtkSnapshot* snapshot, GtkWidget* surface, const UIWindow& window, RunLoop::Time time);

}  // namespace corvane::gtk
