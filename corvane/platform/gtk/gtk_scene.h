/// The scene that the surfaces' windows belong to.
#pragma once

#include <memory>

#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane::gtk {

/// Connects one window scene to the application. While it has windows, one of them is the key window: the first at
/// first, and the first of the others when that one leaves.
///
/// Ownership: owned by the backend; there is one at a time.
/// Threads:   main thread only.
class SceneConnection {
 public:
  SceneConnection();
  SceneConnection(const SceneConnection&) = delete;
  SceneConnection& operator=(const SceneConnection&) = delete;
  ~SceneConnection();

  /// Adds a window to the scene; does nothing when there is no backend any more.
  static void join(UIWindow& window);
  /// Takes a window out of the scene, unless the host app has put it elsewhere.
  static void leave(UIWindow& window);

 private:
  void appointKeyWindow() const;

  std::shared_ptr<UIWindowScene> scene_ = UIWindowScene::create();
};

}  // namespace corvane::gtk
