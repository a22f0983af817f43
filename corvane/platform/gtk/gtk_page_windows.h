/// What a page brings up around itself: its context menu, and windows that it opens.
#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <vector>

#include "corvane/platform/gtk/gtk_page_loader.h"
#include "corvane/platform/gtk/signal_connection.h"

namespace corvane::gtk {

/// Leaves editing, copying and, where they are on, the developer tools in the context menu. The rest would replace the
/// call: going back, loading again, following links. Opens windows that the page may open as plain ones of the same
/// session.
[[nodiscard]] std::vector<SignalConnection> installPageWindows(WebKitWebView* webView,
                                                               std::weak_ptr<const PageLoader> loader);

}  // namespace corvane::gtk
