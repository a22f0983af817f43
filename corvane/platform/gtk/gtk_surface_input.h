/// Touches and clicks on a surface, between our views and what is under them.
#pragma once

#include <gtk/gtk.h>

#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <optional>

#include "corvane/platform/engine/held_touches.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::gtk {

/// Where an event is, in the coordinates of the window that a widget shows.
[[nodiscard]] CGPoint locationIn(GtkWidget* widget, const UIWindow& window, GdkEvent* event);
/// Lets the toolkit meet an event once more.
void putBack(GdkEvent* event);

/// Brings what comes down on a surface widget to its window, and keeps it from the page while a recognizer may want
/// it. A press that none wants is played again from its beginning. A page that had seen the beginning of what turns
/// out to be a drag would never see an end of it.
///
/// Ownership: owned by the surface; it holds the window, and itself for the length of every call that it gets.
/// Threads:   main thread only.
class SurfaceInput : public std::enable_shared_from_this<SurfaceInput> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<SurfaceInput> create(GtkWidget* widget, std::shared_ptr<UIWindow> window);
  SurfaceInput(ConstructionKey key, GtkWidget* widget, std::shared_ptr<UIWindow> window);
  SurfaceInput(const SurfaceInput&) = delete;
  SurfaceInput& operator=(const SurfaceInput&) = delete;
  ~SurfaceInput();

 private:
  using EventHandle = CHandle<GdkEvent, gdk_event_unref>;

  void begin();
  /// Whether the event ends here.
  [[nodiscard]] bool handle(GdkEvent* event);
  [[nodiscard]] bool handleTouch(GdkEvent* event, const UITouchEvent& touch);
  [[nodiscard]] bool handleOtherButton(GdkEvent* event);
  /// The event as a touch; none for what is no part of one.
  [[nodiscard]] std::optional<UITouchEvent> touchOf(GdkEvent* event) const;
  [[nodiscard]] CGPoint locationOf(GdkEvent* event) const;
  void noteDrop(GdkEvent* event) const;
  void cancelAll();

  /// Lets the event go on, after those that wait to be played again.
  [[nodiscard]] bool propagate(GdkEvent* event);
  void replay(GdkEvent* event);
  /// Whether the event is one that is played again.
  [[nodiscard]] bool isReplay(GdkEvent* event);

  GObjectHandle<GtkWidget> widget_;
  std::shared_ptr<UIWindow> window_;
  std::shared_ptr<engine::HeldTouches> held_;
  GObjectHandle<GtkEventController> controller_;
  std::optional<SignalConnection> events_;
  std::optional<SignalConnection> unmapping_;
  /// The presses that are held back.
  std::map<std::uint64_t, EventHandle> beginnings_;
  std::deque<EventHandle> replays_;
};

}  // namespace corvane::gtk
