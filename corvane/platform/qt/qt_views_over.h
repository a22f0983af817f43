/// Views in a window of Qt Quick.
#pragma once

#include <memory>

#include "corvane/export.h"
#include "corvane/platform/views/ui_window.h"

// The toolkit's own class, so that including this header does not pull the toolkit in.
class QQuickWindow;

namespace corvane::qt {

/// The window of views that is shown over everything in a window of Qt Quick. It is made when it is first asked for,
/// has the size of the Qt Quick window from then on and joins the backend's scene. Where none of its views takes
/// touches, pointers and fingers reach the items under it. Keys go to the page that was touched last, while it has the
/// focus; the Tab key leads in and out.
///
/// It is painted in the scene, on the main thread: QML items can be under it, and nothing of the scene over it. What an
/// item clips, fades or turns leaves it alone.
///
/// Ownership: the Qt Quick window shows it until it ends; afterwards it stays a window that nothing shows.
/// Threads:   main thread only. A backend must be installed.
/// Failure:   none.
[[nodiscard]] CORVANE_EXPORT std::shared_ptr<UIWindow> viewsOver(QQuickWindow& window);

}  // namespace corvane::qt
