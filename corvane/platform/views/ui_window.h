/// The root of a tree of views that is on screen.
#pragma once

#include <memory>

#include "corvane/platform/views/touch_event.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

class TouchRouter;
class UIWindowScene;

/// Shows a window's views on the system's own screen; a part of the backend.
class CORVANE_EXPORT UIWindowDelegate {
 public:
  virtual ~UIWindowDelegate();
  /// Called inside each change of the window's tree or geometry, at least once for every change, also for those that
  /// are animated. While `isAnimating` says so, what is shown goes on changing without further calls.
  virtual void viewTreeDidChange() = 0;
};

/// A view without a superview whose contents a backend shows.
///
/// Ownership: held by the host app or by the backend's surface; it knows its host and its scene weakly.
/// Threads:   main thread only.
class CORVANE_EXPORT UIWindow : public UIView {
 public:
  static std::shared_ptr<UIWindow> create(CGRect frame = {});
  explicit UIWindow(ConstructionKey key, CGRect frame = {});
  /// Gestures that are going on are cancelled.
  ~UIWindow() override;

  void setDelegate(std::weak_ptr<UIWindowDelegate> delegate) { delegate_ = std::move(delegate); }

  /// The scene that lists this window; null for none.
  [[nodiscard]] std::shared_ptr<UIWindowScene> windowScene() const { return scene_.lock(); }
  /// Takes the window out of its present scene and puts it at the end of another's windows. There it is the key window
  /// only if it was one and the scene has none.
  void setWindowScene(const std::shared_ptr<UIWindowScene>& scene);

  /// Whether this is the window of its scene that takes what belongs to no view in particular.
  [[nodiscard]] bool isKeyWindow() const { return isKeyWindow_; }
  /// Makes this the key window in place of any other of its scene.
  void makeKey();

  /// Brings a touch to the views and says whose it is. Actions of recognizers are called inside.
  TouchOutcome sendTouch(const UITouchEvent& event);
  /// The window itself is a hit only where it has recognizers: what the host app shows lies under it.
  [[nodiscard]] std::shared_ptr<UIView> hitTest(CGPoint point) override;

  /// Whether what is shown will be different soon without any call, because a change of a view is animated.
  [[nodiscard]] bool isAnimating() const { return hasAnimations(); }

 private:
  friend class UIView;
  void cancelStrayGestures();

  std::weak_ptr<UIWindowDelegate> delegate_;
  std::weak_ptr<UIWindowScene> scene_;
  std::unique_ptr<TouchRouter> router_;
  bool isKeyWindow_ = false;
};

}  // namespace corvane
