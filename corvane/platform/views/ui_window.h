/// The root of a tree of views that is on screen.
#pragma once

#include <memory>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Shows a window's views on the system's own screen; a part of the backend.
class CORVANE_EXPORT UIWindowHost {
 public:
  virtual ~UIWindowHost();
  /// Called inside each change of the window's tree or geometry, at least once for every change.
  virtual void viewTreeDidChange() = 0;
};

/// A view without a superview whose contents a backend shows.
///
/// Ownership: held by the host app or by the backend's surface; it knows its host weakly.
/// Threads:   main thread only.
class CORVANE_EXPORT UIWindow : public UIView {
 public:
  static std::shared_ptr<UIWindow> create(CGRect frame = {});
  using UIView::UIView;

  void setHost(std::weak_ptr<UIWindowHost> host) { host_ = std::move(host); }

 private:
  friend class UIView;
  std::weak_ptr<UIWindowHost> host_;
};

}  // namespace corvane
