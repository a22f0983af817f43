#include "corvane/platform/views/ui_application.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/foundation/main_thread_state.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane {

UIApplication& UIApplication::shared() {
  auto& application = mainThreadState().application;
  if (application == nullptr) {
    application = std::make_shared<UIApplication>(ConstructionKey{});
    application->connect(PlatformInstallation::platform().scene);
  }
  return *application;
}

void UIApplication::connect(std::shared_ptr<UIScene> scene) {
  assertMainThread();
  if (scene == nullptr || std::ranges::find(scenes_, scene) != scenes_.end()) return;
  scenes_.push_back(std::move(scene));
}

void UIApplication::disconnect(const std::shared_ptr<UIScene>& scene) {
  assertMainThread();
  std::erase(scenes_, scene);
}

}  // namespace corvane
