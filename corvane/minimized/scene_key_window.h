/// The window that the user works in.
#pragma once

#include <memory>

#include "corvane/export.h"
#include "corvane/platform/views/ui_application.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane {

/// The key window of the application's first window scene; null where there is no window scene, or no key window in
/// it. Good as the container of a minimized agent view.
[[nodiscard]] CORVANE_EXPORT std::shared_ptr<UIWindow> sceneKeyWindow(
    const UIApplication& application = UIApplication::shared());

}  // namespace corvane
