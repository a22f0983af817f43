/// Which of the toolkit's windows the user is in.
#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <optional>

#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// Makes a window the key window of the scene when the toolkit's window around its surface becomes the active one.
/// While the user is in a window without a surface, the last one stays key.
///
/// Ownership: owned by the surface; it keeps the widget alive and knows the window weakly.
/// Threads:   main thread only.
class ActiveWindowFollower : public std::enable_shared_from_this<ActiveWindowFollower> {
 public:
  static std::shared_ptr<ActiveWindowFollower> create(GtkWidget* widget, const std::shared_ptr<UIWindow>& window);

 private:
  void followRoot(GtkWidget* widget);

  std::weak_ptr<UIWindow> window_;
  std::optional<SignalConnection> root_;
  std::optional<SignalConnection> activity_;
};

}  // namespace corvane::gtk
