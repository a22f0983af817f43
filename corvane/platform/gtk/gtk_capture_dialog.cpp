#include "corvane/platform/gtk/gtk_capture_dialog.h"

#include <gtk/gtk.h>

#include <string>
#include <utility>

#include "corvane/platform/engine/capture_question.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/signal_connection.h"

namespace corvane::gtk {

namespace {

/// What the user knows the page by.
std::string siteName(const std::string& pageUrl) {
  const CHandle<GUri, g_uri_unref> url(g_uri_parse(pageUrl.c_str(), G_URI_FLAGS_NONE, nullptr));
  const char* host = url != nullptr ? g_uri_get_host(url.get()) : nullptr;
  return host != nullptr ? host : "";
}

const char* textOr(const std::string& text, const char* english) { return text.empty() ? english : text.c_str(); }

void endWithDocument(WebKitWebView*, WebKitLoadEvent event, GtkWindow* dialog) noexcept {
  if (event == WEBKIT_LOAD_COMMITTED) gtk_window_destroy(dialog);
}

void endWithProcess(WebKitWebView*, WebKitWebProcessTerminationReason, GtkWindow* dialog) noexcept {
  gtk_window_destroy(dialog);
}

}  // namespace

// The dialog class is deprecated from GTK 4.10; its successor does not exist in 4.8, which we support.
G_GNUC_BEGIN_IGNORE_DEPRECATIONS

void showCaptureDialog(WebKitWebView* webView, const CaptureDialogTexts& texts, const WKMediaCaptureRequest& request,
                       std::move_only_function<void(bool)> answer) {
  GtkRoot* root = gtk_widget_get_root(objectCast<GtkWidget>(webView));
  if (root == nullptr || !GTK_IS_WINDOW(root)) return;
  const auto ask = texts.question ? texts.question : engine::captureQuestion;
  const std::string question = ask(siteName(request.pageUrl), request.type);
  const auto flags = static_cast<GtkDialogFlags>(GTK_DIALOG_MODAL | GTK_DIALOG_DESTROY_WITH_PARENT);
  GtkWidget* dialog = gtk_message_dialog_new(objectCast<GtkWindow>(root), flags, GTK_MESSAGE_QUESTION, GTK_BUTTONS_NONE,
                                             "%s", question.c_str());
  gtk_dialog_add_button(objectCast<GtkDialog>(dialog), textOr(texts.refuse, "Don't allow"), GTK_RESPONSE_NO);
  gtk_dialog_add_button(objectCast<GtkDialog>(dialog), textOr(texts.allow, "Allow"), GTK_RESPONSE_YES);
  connectForLife<void(GtkDialog*, int)>(dialog, "response",
                                        [answer = std::move(answer)](GtkDialog* self, int response) mutable {
                                          if (auto once = std::exchange(answer, nullptr))
                                            once(response == GTK_RESPONSE_YES);
                                          gtk_window_destroy(objectCast<GtkWindow>(self));
                                        });
  g_signal_connect_object(webView, "destroy", reinterpret_cast<GCallback>(gtk_window_destroy), dialog,
                          G_CONNECT_SWAPPED);
  g_signal_connect_object(webView, "load-changed", reinterpret_cast<GCallback>(&endWithDocument), dialog,
                          static_cast<GConnectFlags>(0));
  g_signal_connect_object(webView, "web-process-terminated", reinterpret_cast<GCallback>(&endWithProcess), dialog,
                          static_cast<GConnectFlags>(0));
  gtk_window_present(objectCast<GtkWindow>(dialog));
}

G_GNUC_END_IGNORE_DEPRECATIONS

}  // namespace corvane::gtk
