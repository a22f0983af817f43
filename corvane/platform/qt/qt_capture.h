/// A page's wish for the camera or the microphone, from the engine's signal to the answer.
#pragma once

#include <QtWebEngineCore/QWebEnginePage>
#include <functional>
#include <memory>

#include "corvane/platform/qt/qt_engine_context.h"
#include "corvane/platform/web/web_engine.h"

class QWindow;

namespace corvane::qt {

/// The window over which a page's questions stand; null where the page is in none.
using DialogParent = std::function<QWindow*()>;

/// Puts a page's wishes to the web view's client, and refuses those that are none of ours. A client that is gone
/// refuses.
void handleFeatureRequests(QWebEnginePage& page, DialogParent parent, std::shared_ptr<EngineContext> context,
                           std::weak_ptr<WebEngineClient> client);

}  // namespace corvane::qt
