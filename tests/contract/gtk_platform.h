/// The backend under test whose toolkit is GTK, and what only its tests need.
#pragma once

#include <gtk/gtk.h>

#include <functional>

#include "tests/contract/real_engine_platform.h"

namespace corvane::contract {

class GtkEnginePlatform : public RealEnginePlatform {
 public:
  /// The surface that shows the views; it lies over the host app's own widgets.
  [[nodiscard]] virtual GtkWidget* surface() = 0;
  /// Lets the backend's own dialog ask the user.
  virtual void useOwnCaptureDialog() = 0;
  /// Puts a button of the host app under the surface.
  virtual GtkWidget* addButton(const CGRect& frame, std::function<void()> clicked) = 0;
};

}  // namespace corvane::contract
