#include "corvane/platform/gtk/gtk_scene.h"

#include <algorithm>
#include <memory>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane::gtk {

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

std::shared_ptr<ActiveWindowFollower> ActiveWindowFollower::create(GtkWidget* widget,
                                                                   const std::shared_ptr<UIWindow>& window) {
  auto follower = std::make_shared<ActiveWindowFollower>();
  follower->window_ = window;
  follower->root_ = SignalConnection::make<void(GtkWidget*, GParamSpec*)>(
      widget, "notify::root",
      [follow = whileAlive(follower->weak_from_this(), &ActiveWindowFollower::followRoot)](
          GtkWidget* moved, GParamSpec*) mutable { follow(moved); });
  follower->followRoot(widget);
  return follower;
}

void ActiveWindowFollower::followRoot(GtkWidget* widget) {
  activity_.reset();
  GtkRoot* const root = gtk_widget_get_root(widget);
  if (root == nullptr || GTK_IS_WINDOW(root) == FALSE) return;
  const auto follow = [weak = window_](GtkWindow* active, GParamSpec*) {
    const auto window = weak.lock();
    if (window == nullptr || gtk_window_is_active(active) == FALSE) return;
    // Elsewhere the host app decides.
    if (window->windowScene() != nullptr && window->windowScene() == installedScene()) window->makeKey();
  };
  activity_ = SignalConnection::make<void(GtkWindow*, GParamSpec*)>(root, "notify::is-active", follow);
  follow(objectCast<GtkWindow>(root), nullptr);
}

}  // namespace corvane::gtk
