#include "corvane/platform/views/ui_window_scene.h"

#include <algorithm>

#include "corvane/platform/views/ui_window.h"

namespace corvane {

UIScene::~UIScene() = default;

std::shared_ptr<UIWindowScene> UIWindowScene::create() { return std::make_shared<UIWindowScene>(ConstructionKey{}); }

UIWindowScene::UIWindowScene(ConstructionKey) {}
UIWindowScene::~UIWindowScene() = default;

std::vector<std::shared_ptr<UIWindow>> UIWindowScene::windows() const {
  std::vector<std::shared_ptr<UIWindow>> alive;
  for (const auto& window : windows_) {
    if (auto held = window.lock()) alive.push_back(std::move(held));
  }
  return alive;
}

std::shared_ptr<UIWindow> UIWindowScene::keyWindow() const {
  const auto all = windows();
  const auto key = std::ranges::find_if(all, &UIWindow::isKeyWindow);
  return key != all.end() ? *key : nullptr;
}

void UIWindowScene::append(const std::shared_ptr<UIWindow>& window) { windows_.push_back(window); }

void UIWindowScene::remove(const UIWindow& window) {
  std::erase_if(windows_, [&](const auto& other) {
    const auto held = other.lock();
    return held == nullptr || held.get() == &window;
  });
}

}  // namespace corvane
