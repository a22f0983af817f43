/// How pages are set up: engine settings, scripts and message channels.
#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <vector>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_page_loader.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::gtk {

[[nodiscard]] GObjectHandle<WebKitSettings> makeSettings(const WKWebViewConfiguration& configuration,
                                                         const BackendOptions& options);

/// Adds the scripts and registers the channels in their order. What pages post goes to the client while the connections
/// exist and the page is heard.
[[nodiscard]] std::vector<SignalConnection> installContents(WebKitUserContentManager* manager,
                                                            const WKUserContentController& controller,
                                                            const std::weak_ptr<WebEngineClient>& client,
                                                            const std::weak_ptr<const PageLoader>& loader,
                                                            std::size_t longestMessage);

/// Unregisters the channels; the manager lives on with pages that are still ending.
void removeContents(WebKitUserContentManager* manager, const WKUserContentController& controller);

}  // namespace corvane::gtk
