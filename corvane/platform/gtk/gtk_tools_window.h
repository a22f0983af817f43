/// The window of the engine's developer tools.
#pragma once

#include <webkit/webkit.h>

namespace corvane::gtk {

/// From now on the tools of this page open in a window of their own. Inside the page's widget, where the engine puts
/// them, they would have the page laid out anew. Once a page.
void keepToolsApart(WebKitWebView* webView);
/// Opens the tools, or brings their window to the front.
void showTools(WebKitWebView* webView);

}  // namespace corvane::gtk
