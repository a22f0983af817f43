/// The scene that the surfaces' windows belong to.
#pragma once

#include "corvane/platform/views/ui_window.h"

namespace corvane::engine {

/// Adds a window to the scene of the installed platform; does nothing when there is no backend any more.
void joinScene(UIWindow& window);
/// Takes a window out of the scene, unless the host app has put it elsewhere.
void leaveScene(UIWindow& window);
/// The user is in this window now, so it becomes the key window. In a scene of its own the host app decides.
void windowActivated(UIWindow& window);

}  // namespace corvane::engine
