#include "corvane/platform/gtk/gtk_active_window.h"

#include <memory>

#include "corvane/platform/engine/surface_scene.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane::gtk {

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
    engine::windowActivated(*window);
  };
  activity_ = SignalConnection::make<void(GtkWindow*, GParamSpec*)>(root, "notify::is-active", follow);
  follow(objectCast<GtkWindow>(root), nullptr);
}

}  // namespace corvane::gtk
