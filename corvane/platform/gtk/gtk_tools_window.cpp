#include "corvane/platform/gtk/gtk_tools_window.h"

#include <gtk/gtk.h>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/signal_connection.h"

namespace corvane::gtk {

namespace {

constexpr int usualWidth = 960;
constexpr int usualHeight = 640;
constexpr const char* windowKey = "corvane-tools-window";

GtkWindow* windowOf(WebKitWebInspector* inspector) {
  return static_cast<GtkWindow*>(g_object_get_data(objectCast<GObject>(inspector), windowKey));
}

gboolean putIntoWindow(WebKitWebInspector* inspector) {
  if (windowOf(inspector) != nullptr) return TRUE;
  auto* const window = objectCast<GtkWindow>(gtk_window_new());
  gtk_window_set_default_size(window, usualWidth, usualHeight);
  gtk_window_set_child(window, objectCast<GtkWidget>(webkit_web_inspector_get_web_view(inspector)));
  // The inspector ends the window, so it is there as long.
  connectForLife<gboolean(GtkWindow*)>(window, "close-request", [inspector](GtkWindow*) {
    webkit_web_inspector_close(inspector);
    return TRUE;
  });
  g_object_set_data(objectCast<GObject>(inspector), windowKey, window);
  gtk_window_present(window);
  return TRUE;
}

void endWindow(WebKitWebInspector* inspector) {
  GtkWindow* const window = windowOf(inspector);
  g_object_set_data(objectCast<GObject>(inspector), windowKey, nullptr);
  if (window != nullptr) gtk_window_destroy(window);
}

}  // namespace

void keepToolsApart(WebKitWebView* webView) {
  WebKitWebInspector* const inspector = webkit_web_view_get_inspector(webView);
  connectForLife<gboolean(WebKitWebInspector*)>(inspector, "attach", &putIntoWindow);
  connectForLife<void(WebKitWebInspector*)>(inspector, "closed", &endWindow);
}

void showTools(WebKitWebView* webView) {
  webkit_settings_set_enable_developer_extras(webkit_web_view_get_settings(webView), TRUE);
  WebKitWebInspector* const inspector = webkit_web_view_get_inspector(webView);
  if (GtkWindow* const window = windowOf(inspector)) return gtk_window_present(window);
  webkit_web_inspector_show(inspector);
}

}  // namespace corvane::gtk
