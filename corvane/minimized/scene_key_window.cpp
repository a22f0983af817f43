#include "corvane/minimized/scene_key_window.h"

#include "corvane/platform/views/ui_window_scene.h"

namespace corvane {

std::shared_ptr<UIWindow> sceneKeyWindow(const UIApplication& application) {
  for (const auto& scene : application.connectedScenes()) {
    const auto windowScene = std::dynamic_pointer_cast<UIWindowScene>(scene);
    if (windowScene == nullptr) continue;
    for (const auto& window : windowScene->windows()) {
      if (window->isKeyWindow()) return window;
    }
    return nullptr;
  }
  return nullptr;
}

}  // namespace corvane
