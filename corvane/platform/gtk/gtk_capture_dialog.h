/// The question that is put to the user when nobody else has decided about a page's capture.
#pragma once

#include <webkit/webkit.h>

#include <functional>

#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/web/wk_ui_delegate.h"

namespace corvane::gtk {

/// Asks in a modal dialog over the web view's window. The answer is called once. It is dropped uncalled when the web
/// view is in no window, when it ends, or when the dialog is closed.
void showCaptureDialog(WebKitWebView* webView, const CaptureDialogTexts& texts, const WKMediaCaptureRequest& request,
                       std::move_only_function<void(bool)> answer);

}  // namespace corvane::gtk
