#include "corvane/platform/views/ui_application.h"

#include <algorithm>
#include <utility>

namespace corvane {

UIApplication& UIApplication::shared() {
  static auto& application = *new UIApplication;
  return application;
}

void UIApplication::connect(std::shared_ptr<UIScene> scene) {
  if (scene == nullptr || std::ranges::find(scenes_, scene) != scenes_.end()) return;
  scenes_.push_back(std::move(scene));
}

void UIApplication::disconnect(const std::shared_ptr<UIScene>& scene) { std::erase(scenes_, scene); }

}  // namespace corvane
