#include "corvane/platform/declarative/view_container.h"

#include <algorithm>
#include <cstddef>

namespace corvane {

void ViewContainer::add(const std::shared_ptr<UIView>& view) {
  added_.push_back(view.get());
  view_->insertSubview(view, placeAfterLast(*view));
  view->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  view->setFrame(view_->bounds());
  last_ = view.get();
}

void ViewContainer::keep(const UIView& view) {
  if (view.superview() == view_) last_ = &view;
}

void ViewContainer::remove(const std::shared_ptr<UIView>& view) {
  added_.erase(std::ranges::find(added_, view.get()));
  const bool isShownByAnother = std::ranges::find(added_, view.get()) != added_.end();
  if (!isShownByAnother && view->superview() == view_) view->removeFromSuperview();
}

std::size_t ViewContainer::placeAfterLast(const UIView& added) const {
  std::size_t index = 0;
  for (const auto& subview : view_->subviews()) {
    if (last_ == nullptr) break;
    if (subview.get() != &added) ++index;
    if (subview.get() == last_) break;
  }
  return index;
}

}  // namespace corvane
