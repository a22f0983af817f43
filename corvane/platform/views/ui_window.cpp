#include "corvane/platform/views/ui_window.h"

#include <utility>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/views/touch_router.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane {

UIWindowDelegate::~UIWindowDelegate() = default;

std::shared_ptr<UIWindow> UIWindow::create(CGRect frame) {
  return std::make_shared<UIWindow>(ConstructionKey{}, frame);
}

UIWindow::UIWindow(ConstructionKey key, CGRect frame)
    : UIView(key, frame), router_(std::make_unique<TouchRouter>(*this)) {}

UIWindow::~UIWindow() = default;

void UIWindow::setWindowScene(const std::shared_ptr<UIWindowScene>& scene) {
  assertMainThread();
  const auto previous = scene_.lock();
  if (previous == scene) return;
  if (previous != nullptr) previous->remove(*this);
  scene_ = scene;
  if (scene == nullptr) return;
  if (scene->keyWindow() != nullptr) isKeyWindow_ = false;
  scene->append(std::static_pointer_cast<UIWindow>(shared_from_this()));
}

void UIWindow::makeKey() {
  assertMainThread();
  if (const auto scene = windowScene()) {
    if (const auto previous = scene->keyWindow()) previous->isKeyWindow_ = false;
  }
  isKeyWindow_ = true;
}

TouchOutcome UIWindow::sendTouch(const UITouchEvent& event) {
  assertMainThread();
  // A window that outlives its backend feels nothing.
  if (!RunLoop::hasMain()) return TouchOutcome::ignored;
  // An action may drop the last holder.
  const auto alive = shared_from_this();
  return router_->send(event);
}

std::shared_ptr<UIView> UIWindow::hitTest(CGPoint point) {
  auto hit = UIView::hitTest(point);
  return hit.get() == this && gestureRecognizers().empty() ? nullptr : hit;
}

void UIWindow::cancelStrayGestures() { router_->cancelStrays(); }

}  // namespace corvane
