/// The widget in which a host app shows a window of our views.
#pragma once

#include <memory>

#include "corvane/export.h"
#include "corvane/platform/views/ui_window.h"

// The toolkit's own class, so that including this header does not pull the toolkit in.
class QWidget;

namespace corvane::qt {

/// Shows one window of views inside a widget that the host app places among its own.
///
/// The window has the widget's size from the widget's first layout on, and none before. Views that are to grow with it
/// in proportion want a frame set on the window first, if they come earlier. The window joins the backend's scene.
///
/// The widget may lie over others, as the later one of two in the same cell of a `QGridLayout`: where no view takes
/// touches, pointers and fingers reach what is under it. Touches go to the gesture recognizers first; a page gets those
/// that none of them wants, once that is certain, and nothing of the others. Keys go to the page that was touched last,
/// while the widget has the focus.
///
/// Ownership: held by the host app; it owns its window and its widget, which leaves its parent when this ends. A parent
///            that ends earlier takes the widget along.
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

  /// The widget; null after a parent took it along. It takes all the room it is given.
  [[nodiscard]] QWidget* widget() const;
  [[nodiscard]] const std::shared_ptr<UIWindow>& window() const;

  void viewTreeDidChange() override;

 private:
  class Parts;

  std::shared_ptr<Parts> parts_;
};

}  // namespace corvane::qt
