#include "corvane/platform/gtk/gtk_capture_dialog.h"

#include <gtk/gtk.h>

#include <string>
#include <utility>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/signal_connection.h"

namespace corvane::gtk {

namespace {

const char* deviceNames(WKMediaCaptureType type) {
  switch (type) {
    case WKMediaCaptureType::camera:
      return "camera";
    case WKMediaCaptureType::microphone:
      return "microphone";
    case WKMediaCaptureType::cameraAndMicrophone:
      return "camera and microphone";
  }
  return "";
}

/// What the user knows the page by.
std::string siteName(const std::string& pageUrl) {
  const CHandle<GUri, g_uri_unref> url(g_uri_parse(pageUrl.c_str(), G_URI_FLAGS_NONE, nullptr));
  const char* host = url != nullptr ? g_uri_get_host(url.get()) : nullptr;
  return host != nullptr && *host != '\0' ? host : "This page";
}

}  // namespace

// The dialog class is deprecated from GTK 4.10; its successor does not exist in 4.8, which we support.
G_GNUC_BEGIN_IGNORE_DEPRECATIONS

void showCaptureDialog(WebKitWebView* webView, const WKMediaCaptureRequest& request,
                       std::move_only_function<void(bool)> answer) {
  GtkRoot* root = gtk_widget_get_root(objectCast<GtkWidget>(webView));
  if (root == nullptr || !GTK_IS_WINDOW(root)) return;
  const auto flags = static_cast<GtkDialogFlags>(GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT);
  GtkWidget* dialog = gtk_message_dialog_new(objectCast<GtkWindow>(root), flags, GTK_MESSAGE_QUESTION, GTK_BUTTONS_NONE,
                                             "%s would like to use your %s.", siteName(request.pageUrl).c_str(),
                                             deviceNames(request.type));
  gtk_dialog_add_button(objectCast<GtkDialog>(dialog), "Don't allow", GTK_RESPONSE_NO);
  gtk_dialog_add_button(objectCast<GtkDialog>(dialog), "Allow", GTK_RESPONSE_YES);
  connectForLife<void(GtkDialog*, int)>(dialog, "response",
                                        [answer = std::move(answer)](GtkDialog* self, int response) mutable {
                                          if (auto once = std::exchange(answer, nullptr))
                                            once(response == GTK_RESPONSE_YES);
                                          gtk_window_destroy(objectCast<GtkWindow>(self));
                                        });
  g_signal_connect_object(webView, "destroy", reinterpret_cast<GCallback>(gtk_window_destroy), dialog,
                          G_CONNECT_SWAPPED);
  gtk_window_present(objectCast<GtkWindow>(dialog));
}

G_GNUC_END_IGNORE_DEPRECATIONS

}  // namespace corvane::gtk
