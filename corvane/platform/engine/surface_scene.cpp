#include "corvane/platform/engine/surface_scene.h"

#include <algorithm>
#include <memory>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane::engine {

namespace {

std::shared_ptr<UIWindowScene> installedScene() {
  const Platform* const platform = PlatformInstallation::findPlatform();
  return platform == nullptr ? nullptr : platform->scene;
}

/// While a scene has windows, one of them is the key window: the one that the user is in, once there is one. Before
/// that, and when that one leaves, it is the first.
void appointKeyWindow(const UIWindowScene& scene) {
  const auto windows = scene.windows();
  if (!windows.empty() && std::ranges::none_of(windows, &UIWindow::isKeyWindow)) windows.front()->makeKey();
}

}  // namespace

void joinScene(UIWindow& window) {
  const auto scene = installedScene();
  if (scene == nullptr) return;
  window.setWindowScene(scene);
  appointKeyWindow(*scene);
}

void leaveScene(UIWindow& window) {
  const auto scene = installedScene();
  if (scene == nullptr || window.windowScene() != scene) return;
  window.setWindowScene(nullptr);
  appointKeyWindow(*scene);
}

void windowActivated(UIWindow& window) {
  if (window.windowScene() != nullptr && window.windowScene() == installedScene()) window.makeKey();
}

}  // namespace corvane::engine
