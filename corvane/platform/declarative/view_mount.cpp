#include "corvane/platform/declarative/view_mount.h"

#include <utility>

#include "corvane/platform/declarative/z_stack.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane {

namespace {

class RootView final : public UIView {
 public:
  RootView(ConstructionKey key, CGRect frame) : UIView(key, frame) {}
  static std::shared_ptr<UIView> create(CGRect frame) { return std::make_shared<RootView>(ConstructionKey{}, frame); }

  [[nodiscard]] std::shared_ptr<UIView> hitTest(CGPoint point) override {
    auto hit = UIView::hitTest(point);
    return hit.get() == this ? nullptr : hit;
  }
};

}  // namespace

std::shared_ptr<ViewMount> ViewMount::create(UIView& container) {
  assertMainThread();
  return std::make_shared<ViewMount>(ConstructionKey{}, container);
}

ViewMount::ViewMount(ConstructionKey /*key*/, UIView& container) : container_(RootView::create(container.bounds())) {
  view()->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  container.addSubview(view());
}

ViewMount::~ViewMount() {
  remove();
  view()->removeFromSuperview();
}

void ViewMount::show(AnyView view) {
  assertMainThread();
  nextView_ = std::move(view);
  update();
}

void ViewMount::remove() {
  assertMainThread();
  show(EmptyView{});
}

void ViewMount::requestUpdate() {
  if (weak_from_this().expired() || std::exchange(isUpdateRequested_, true)) return;
  RunLoop::main().post(whileAlive(weak_from_this(), [](ViewMount& self) {
    self.isUpdateRequested_ = false;
    self.isOutdated_ = true;
    self.update();
  }));
}

void ViewMount::update() {
  // The update that is going on comes to it.
  if (std::exchange(isUpdating_, true)) return;
  // Null for a mount that is ending: what it calls cannot reach it.
  const auto alive = weak_from_this().lock();
  while (nextView_ || isOutdated_) runPass();
  isUpdating_ = false;
}

void ViewMount::runPass() {
  ViewPass pass(*this, container_);
  if (auto next = std::exchange(nextView_, std::nullopt)) {
    Root root{*std::move(next)};
    if (root_) {
      root_->update(std::move(root), pass);
    } else {
      root_.emplace(std::move(root), pass);
    }
  } else {
    isOutdated_ = false;
    if (root_) root_->refresh(pass);
  }
  pass.runActions();
}

}  // namespace corvane
