/// The widget in which a host app shows a window of our views.
#pragma once

#include <memory>

#include "corvane/export.h"
#include "corvane/platform/views/ui_window.h"

// The toolkit's own declaration, so that including this header does not pull the toolkit in.
struct _GtkWidget;
using GtkWidget = _GtkWidget;

namespace corvane::gtk {

/// Shows one window of views inside a widget that the host app places among its own.
///
/// The window has the widget's size from the widget's first layout on, and none before. Views that are to grow with it
/// in proportion want a frame set on the window first, if they come earlier. The window joins the backend's scene.
///
/// The widget may lie over others, as the overlay of a `GtkOverlay`: where no view takes touches, pointers and fingers
/// reach what is under it. Touches go to the gesture recognizers first; a page gets those that none of them wants,
/// once that is certain, and nothing of the others.
///
/// A web view becomes a child of the widget when it is first seen in the tree and stays one for life, hidden while it
/// is elsewhere. The widget may be moved among the app's others, and to another window.
///
/// The window becomes its scene's key window when the toolkit's window around it becomes the active one.
///
/// Keys follow what the user sees. Widgets that views cover wholly are left out when the focus moves. When what has the
/// focus gets covered, the focus goes into the page that covers it. A view with a pan recognizer, such as a call that
/// floats, is a stop of the Tab key. There the arrow keys drag it towards a side, and Enter or space taps it; where no
/// recognizer takes the tap, the focus goes into its page. Assistive technology knows the widget as a group with the
/// label "Call", which the app may change on the widget, and each page by its title.
///
/// Ownership: held by the host app; it owns its window and holds its widget. When it ends while the widget is still in
///            a container, the widget stays there and shows nothing.
/// Threads:   main thread only. A backend must be installed.
/// Failure:   none. What cannot be drawn, such as a view without a size or with a transform that is not finite, is
///            left out.
class CORVANE_EXPORT Surface final : public UIWindowDelegate, public std::enable_shared_from_this<Surface> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<Surface> create();
  explicit Surface(ConstructionKey key);
  Surface(const Surface&) = delete;
  Surface& operator=(const Surface&) = delete;
  ~Surface() override;

  /// The widget, owned by the surface and by the container that it is put into. It takes all the room it is given.
  [[nodiscard]] GtkWidget* widget() const;
  [[nodiscard]] const std::shared_ptr<UIWindow>& window() const;

  void viewTreeDidChange() override;

 private:
  class Parts;

  std::shared_ptr<Parts> parts_;
};

}  // namespace corvane::gtk
