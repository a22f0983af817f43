#include "corvane/platform/gtk/gtk_scene.h"

#include <algorithm>

#include "corvane/platform/views/ui_application.h"

namespace corvane::gtk {

namespace {

const SceneConnection* connection = nullptr;

}  // namespace

SceneConnection::SceneConnection() {
  connection = this;
  UIApplication::shared().connect(scene_);
}

SceneConnection::~SceneConnection() {
  UIApplication::shared().disconnect(scene_);
  connection = nullptr;
}

void SceneConnection::join(UIWindow& window) {
  if (connection == nullptr) return;
  window.setWindowScene(connection->scene_);
  connection->appointKeyWindow();
}

void SceneConnection::leave(UIWindow& window) {
  if (connection == nullptr || window.windowScene() != connection->scene_) return;
  window.setWindowScene(nullptr);
  connection->appointKeyWindow();
}

void SceneConnection::appointKeyWindow() const {
  const auto windows = scene_->windows();
  if (!windows.empty() && std::ranges::none_of(windows, &UIWindow::isKeyWindow)) windows.front()->makeKey();
}

}  // namespace corvane::gtk
