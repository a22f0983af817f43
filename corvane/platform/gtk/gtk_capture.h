/// A page's wish for the camera or the microphone, from the engine's signal to the answer.
#pragma once

#include <webkit/webkit.h>

#include <memory>

#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::gtk {

/// Puts a permission request of the engine to the web view's client. False for kinds of requests that are none of
/// ours; the engine's own default, a refusal, then holds. A client that is gone refuses.
[[nodiscard]] bool handlePermissionRequest(WebKitWebView* webView, WebKitPermissionRequest* permission,
                                           const std::shared_ptr<EngineContext>& context,
                                           const std::weak_ptr<WebEngineClient>& client);

}  // namespace corvane::gtk
