/// Drawing a window of views with the toolkit.
#pragma once

#include <gtk/gtk.h>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// The engine behind a view; null for a view that is none of our web views.
[[nodiscard]] GtkWebEngine* engineOf(const UIView& view);

/// Draws the window and, in their places among its views, the children of the surface widget.
void drawWindow(GtkSnapshot* snapshot, GtkWidget* surface, const UIWindow& window, RunLoop::Time time);

}  // namespace corvane::gtk
