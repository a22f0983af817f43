#include "corvane/platform/gtk/gtk_page_windows.h"

#include <gtk/gtk.h>

#include <memory>
#include <utility>

namespace corvane::gtk {

namespace {

/// Those that leave the page where it is.
bool staysOnThePage(WebKitContextMenuItem* item) {
  if (webkit_context_menu_item_is_separator(item) != FALSE) return true;
  switch (webkit_context_menu_item_get_stock_action(item)) {
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_LINK_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_IMAGE_URL_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_VIDEO_LINK_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY_AUDIO_LINK_TO_CLIPBOARD:
    case WEBKIT_CONTEXT_MENU_ACTION_COPY:
    case WEBKIT_CONTEXT_MENU_ACTION_CUT:
    case WEBKIT_CONTEXT_MENU_ACTION_PASTE:
    case WEBKIT_CONTEXT_MENU_ACTION_PASTE_AS_PLAIN_TEXT:
    case WEBKIT_CONTEXT_MENU_ACTION_DELETE:
    case WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL:
    case WEBKIT_CONTEXT_MENU_ACTION_INPUT_METHODS:
    case WEBKIT_CONTEXT_MENU_ACTION_UNICODE:
    case WEBKIT_CONTEXT_MENU_ACTION_INSERT_EMOJI:
    case WEBKIT_CONTEXT_MENU_ACTION_SPELLING_GUESS:
    case WEBKIT_CONTEXT_MENU_ACTION_NO_GUESSES_FOUND:
    case WEBKIT_CONTEXT_MENU_ACTION_IGNORE_SPELLING:
    case WEBKIT_CONTEXT_MENU_ACTION_LEARN_SPELLING:
    case WEBKIT_CONTEXT_MENU_ACTION_IGNORE_GRAMMAR:
    case WEBKIT_CONTEXT_MENU_ACTION_INSPECT_ELEMENT:
      return true;
    default:
      return false;
  }
}

gboolean pruneMenu(WebKitWebView*, WebKitContextMenu* menu, WebKitHitTestResult*) {
  std::vector<WebKitContextMenuItem*> leaving;
  bool isEmpty = true;
  for (GList* entry = webkit_context_menu_get_items(menu); entry != nullptr; entry = entry->next) {
    auto* const item = objectCast<WebKitContextMenuItem>(static_cast<GObject*>(entry->data));
    if (!staysOnThePage(item)) leaving.push_back(item);
    if (staysOnThePage(item) && webkit_context_menu_item_is_separator(item) == FALSE) isEmpty = false;
  }
  for (WebKitContextMenuItem* const item : leaving) webkit_context_menu_remove(menu, item);
  return isEmpty ? TRUE : FALSE;
}

void present(WebKitWebView* popup, WebKitWebView* opener) {
  auto* const window = objectCast<GtkWindow>(gtk_window_new());
  GtkRoot* const root = gtk_widget_get_root(objectCast<GtkWidget>(opener));
  if (root != nullptr && GTK_IS_WINDOW(root)) gtk_window_set_transient_for(window, objectCast<GtkWindow>(root));
  gtk_window_set_destroy_with_parent(window, TRUE);
  constexpr int usualWidth = 480;
  constexpr int usualHeight = 640;
  gtk_window_set_default_size(window, usualWidth, usualHeight);
  gtk_window_set_child(window, objectCast<GtkWidget>(popup));
  gtk_window_present(window);
}

GtkWidget* openWindow(WebKitWebView* opener) {
  auto* const popup = WEBKIT_WEB_VIEW(g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", opener, "settings",
                                                   webkit_web_view_get_settings(opener), nullptr));
  connectForLife<void(WebKitWebView*)>(
      popup, "ready-to-show", [weak = std::make_shared<GObjectWeakHandle<WebKitWebView>>(opener)](WebKitWebView* self) {
        if (const auto alive = weak->lock()) present(self, alive.get());
      });
  connectForLife<void(WebKitWebView*)>(popup, "close", [](WebKitWebView* self) {
    GtkRoot* const root = gtk_widget_get_root(objectCast<GtkWidget>(self));
    if (root != nullptr && GTK_IS_WINDOW(root)) gtk_window_destroy(objectCast<GtkWindow>(root));
  });
  return objectCast<GtkWidget>(popup);
}

}  // namespace

std::vector<SignalConnection> installPageWindows(WebKitWebView* webView, std::weak_ptr<const PageLoader> loader) {
  std::vector<SignalConnection> connections;
  connections.push_back(SignalConnection::make<gboolean(WebKitWebView*, WebKitContextMenu*, WebKitHitTestResult*)>(
      webView, "context-menu", pruneMenu));
  connections.push_back(
      // A script's wish for a window comes here first, that of a link has been decided about before.
      SignalConnection::make<GtkWidget*(WebKitWebView*, WebKitNavigationAction*)>(
          webView, "create", [loader = std::move(loader)](WebKitWebView* opener, WebKitNavigationAction* action) {
            const auto alive = loader.lock();
            return alive != nullptr && alive->mayOpenWindow(action) ? openWindow(opener) : nullptr;
          }));
  return connections;
}

}  // namespace corvane::gtk
