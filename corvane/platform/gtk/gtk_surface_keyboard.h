/// The keyboard's way among a surface, its pages and the widgets of the host app.
#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <optional>

#include "corvane/platform/gtk/glib_source.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// Keeps the focus where the user can see it, and lets keys do to a floating view what a finger could.
///
/// Ownership: owned by the surface; it holds the window, and itself for the length of every call that it gets.
/// Threads:   main thread only.
class SurfaceKeyboard : public std::enable_shared_from_this<SurfaceKeyboard> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<SurfaceKeyboard> create(GtkWidget* widget, std::shared_ptr<UIWindow> window);
  SurfaceKeyboard(ConstructionKey key, GtkWidget* widget, std::shared_ptr<UIWindow> window);
  SurfaceKeyboard(const SurfaceKeyboard&) = delete;
  SurfaceKeyboard& operator=(const SurfaceKeyboard&) = delete;
  ~SurfaceKeyboard();

  /// What is covered, and what floats, may be something else by now. May be called while widgets are laid out.
  void viewsDidChange();
  /// Marks the floating view while it has the focus.
  void drawFocus(GtkSnapshot* snapshot) const;

 private:
  void begin();
  void followRoot();
  /// The page in front of a point of the surface; null for none.
  [[nodiscard]] GtkWidget* pageAt(CGPoint point) const;
  /// Whether our views lie over the whole of a widget, so that nobody sees it.
  [[nodiscard]] bool covers(GtkWidget* other) const;
  void placeFocus();
  void leaveCovered();
  [[nodiscard]] bool handleKey(guint key);
  void tap(const UIView& view);

  GObjectHandle<GtkWidget> widget_;
  std::shared_ptr<UIWindow> window_;
  GObjectHandle<GtkEventController> keys_;
  /// On the toolkit's window, where it hears of Tab first.
  GObjectHandle<GtkEventController> tabKeys_;
  GObjectHandle<GtkWidget> root_;
  std::optional<SignalConnection> keyPresses_;
  std::optional<SignalConnection> tabPresses_;
  std::optional<SignalConnection> rootChanges_;
  std::optional<SignalConnection> focusChanges_;
  GtkDirectionType direction_ = GTK_DIR_TAB_FORWARD;
  bool isLeaving_ = false;
  /// Calls `placeFocus` once the widgets are laid out.
  std::optional<GlibSource> placing_;
};

}  // namespace corvane::gtk
