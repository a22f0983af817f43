/// What a finger came down on.
#pragma once

#include <memory>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

class UIView;
class UIWindow;

/// The view that takes touches at a point of a window, and where on that view the point lies. A backend keeps it for
/// each touch that goes to a page: the page may be moved from under a finger that rests on it.
///
/// Ownership: a value; it knows view and window weakly.
/// Threads:   main thread only.
class CORVANE_EXPORT TouchAnchor {
 public:
  /// Nothing, which never moves.
  TouchAnchor() = default;
  /// The point is in the window's own coordinates.
  TouchAnchor(UIWindow& window, CGPoint location);

  /// Null where no view takes touches, and once the view has ended.
  [[nodiscard]] std::shared_ptr<UIView> view() const { return view_.lock(); }
  /// Whether what was touched now lies elsewhere, by more than 10 points of the window, or is in the window no longer.
  /// Where it goes in an animation counts. Such a touch is no tap, and where it ends means nothing to the page.
  [[nodiscard]] bool hasMoved() const;

 private:
  std::weak_ptr<UIWindow> window_;
  std::weak_ptr<UIView> view_;
  CGPoint location_;
  CGPoint locationInView_;
  bool isOnView_ = false;
};

}  // namespace corvane
