/// One instance of the host app's user interface.
#pragma once

#include "corvane/export.h"

namespace corvane {

/// What an application can be connected to; the only kind so far is the window scene.
///
/// Ownership: shared by the application while it is connected, and by whoever made it.
/// Threads:   main thread only.
class CORVANE_EXPORT UIScene {
 public:
  UIScene() = default;
  UIScene(const UIScene&) = delete;
  UIScene& operator=(const UIScene&) = delete;
  virtual ~UIScene();
};

}  // namespace corvane
