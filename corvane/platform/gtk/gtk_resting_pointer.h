/// A mouse that rests while what lies under it changes.
#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <optional>

#include "corvane/platform/gtk/glib_source.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// Makes the toolkit look again for what is under the mouse when our views change there. By itself it looks when the
/// mouse moves, so that a click of a resting one would go to what was there before. What is pressed belongs to where
/// the press was, so that looking waits for the release.
///
/// Ownership: owned by the surface; it keeps the widget alive and knows the window weakly.
/// Threads:   main thread only.
class RestingPointer : public std::enable_shared_from_this<RestingPointer> {
 public:
  static std::shared_ptr<RestingPointer> create(GtkWidget* widget, const std::shared_ptr<UIWindow>& window);
  ~RestingPointer();

  /// To be called after each layout of the views.
  void viewsDidChange();

 private:
  void followRoot();
  void leaveRoot();
  /// Whether the event ends here.
  [[nodiscard]] bool note(GdkEvent* event);
  void lookAgain();
  [[nodiscard]] std::weak_ptr<UIView> viewBelow() const;

  GObjectHandle<GtkWidget> widget_;
  std::weak_ptr<UIWindow> window_;
  std::optional<SignalConnection> rootChange_;
  /// What sees the mouse wherever it is in the toolkit's window.
  GObjectHandle<GtkEventController> controller_;
  std::optional<SignalConnection> events_;
  CHandle<GdkEvent, gdk_event_unref> lastMotion_;
  std::weak_ptr<UIView> viewBelow_;
  std::optional<GlibSource> later_;
  bool isPressed_ = false;
  bool isOutdated_ = false;
};

}  // namespace corvane::gtk
