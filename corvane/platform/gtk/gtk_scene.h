/// The scene that the surfaces' windows belong to.
#pragma once

#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// Adds a window to the scene of the installed platform; does nothing when there is no backend any more.
void joinScene(UIWindow& window);
/// Takes a window out of the scene, unless the host app has put it elsewhere.
void leaveScene(UIWindow& window);

}  // namespace corvane::gtk
