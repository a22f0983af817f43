#include "corvane/platform/views/ui_view.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/views/ui_gesture_recognizer.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/views/view_animations.h"

namespace corvane {

namespace {

CGRect boundingBox(CGSize size, const CGAffineTransform& transform) {
  const std::array corners{transform.apply({0, 0}), transform.apply({size.width, 0}), transform.apply({0, size.height}),
                           transform.apply({size.width, size.height})};
  CGPoint low = corners.front();
  CGPoint high = low;
  for (const CGPoint corner : corners) {
    low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
    high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
  }
  return {low, {high.x - low.x, high.y - low.y}};
}

/// The size that a transform turns into a box of the wanted size. A turn mixes the two lengths, so both are solved
/// together; where there is no such size the present one stays.
CGSize sizeBefore(const CGAffineTransform& transform, CGSize box, CGSize present) {
  const CGFloat a = std::abs(transform.a);
  const CGFloat b = std::abs(transform.b);
  const CGFloat c = std::abs(transform.c);
  const CGFloat d = std::abs(transform.d);
  const CGFloat determinant = a * d - b * c;
  // Near an eighth of a turn every size has a square box, and rounding would make up the difference.
  constexpr CGFloat tooSmall = 1e-9;
  if (!(std::abs(determinant) > tooSmall * (a * d + b * c))) return present;
  const CGSize size{(d * box.width - c * box.height) / determinant, (a * box.height - b * box.width) / determinant};
  const bool isSize = std::isfinite(size.width) && std::isfinite(size.height) && size.width >= 0 && size.height >= 0;
  return isSize ? size : present;
}

}  // namespace

std::shared_ptr<UIView> UIView::create(CGRect frame) { return std::make_shared<UIView>(ConstructionKey{}, frame); }

UIView::UIView(ConstructionKey, CGRect frame) : bounds_{{}, frame.size}, center_{frame.midX(), frame.midY()} {}

UIView::~UIView() {
  // Those that somebody else holds must not stay in the middle of a gesture.
  for (const auto& recognizer : std::exchange(gestureRecognizers_, {})) recognizer->reset();
}

CGAffineTransform UIView::transformToSuperview() const {
  return UIViewPresentation{.bounds = bounds_, .center = center_, .transform = transform_}.transformToSuperview();
}

CGRect UIView::frame() const {
  if (transform_.isIdentity()) {
    return {{center_.x - bounds_.size.width / 2, center_.y - bounds_.size.height / 2}, bounds_.size};
  }
  const CGSize box = boundingBox(bounds_.size, transform_).size;
  return {{center_.x - box.width / 2, center_.y - box.height / 2}, box};
}

template <class Value>
void UIView::setAnimatable(Value UIView::* own, AnimatedProperty<Value> ViewAnimations::* property,
                           const Value& value) {
  // Writing what is there already is no change, and lets what is on its way go on.
  if (this->*own == value) return;
  const std::shared_ptr<AnimationRun>& run = AnimationRun::current();
  if (run != nullptr) {
    if (animations_ == nullptr) animations_ = std::make_unique<ViewAnimations>(*this);
    const RunLoop::Time now = RunLoop::main().now();
    auto& animated = (*animations_).*property;
    animations_->start(animated, run, shownValue(animated, this->*own, now), now);
  } else if (animations_ != nullptr) {
    ViewAnimations::stop((*animations_).*property, ViewAnimations::now());
  }
  this->*own = value;
}

void UIView::setBoundsValue(const CGRect& bounds) {
  const CGSize from = bounds_.size;
  setAnimatable(&UIView::bounds_, &ViewAnimations::bounds, bounds);
  if (from != bounds.size) setNeedsLayout();
  resizeSubviews(from);
}

void UIView::setFrame(CGRect frame) {
  assertMainThread();
  setAnimatable(&UIView::center_, &ViewAnimations::center, {frame.midX(), frame.midY()});
  setBoundsValue(
      {bounds_.origin, transform_.isIdentity() ? frame.size : sizeBefore(transform_, frame.size, bounds_.size)});
  noteChange();
}

void UIView::setBounds(CGRect bounds) {
  assertMainThread();
  setBoundsValue(bounds);
  noteChange();
}

void UIView::setCenter(CGPoint center) {
  assertMainThread();
  setAnimatable(&UIView::center_, &ViewAnimations::center, center);
  noteChange();
}

void UIView::setTransform(const CGAffineTransform& transform) {
  assertMainThread();
  setAnimatable(&UIView::transform_, &ViewAnimations::transform, transform);
  noteChange();
}

void UIView::setCornerRadius(CGFloat radius) {
  assertMainThread();
  setAnimatable(&UIView::cornerRadius_, &ViewAnimations::cornerRadius, radius);
  noteChange();
}

void UIView::setAlpha(CGFloat alpha) {
  assertMainThread();
  setAnimatable(&UIView::alpha_, &ViewAnimations::alpha, alpha);
  noteChange();
}

void UIView::setClipsToBounds(bool clips) {
  assertMainThread();
  clipsToBounds_ = clips;
  noteChange();
}

void UIView::setBackgroundColor(std::optional<UIColor> color) {
  assertMainThread();
  backgroundColor_ = color;
  noteChange();
}

void UIView::setDecoration(const UIViewDecoration& decoration) {
  assertMainThread();
  decoration_ = decoration == UIViewDecoration{} ? nullptr : std::make_unique<UIViewDecoration>(decoration);
  noteChange();
}

void UIView::setHidden(bool isHidden) {
  assertMainThread();
  isHidden_ = isHidden;
  const auto parent = superview();
  parent != nullptr && parent->placesByFit() ? noteFitChange() : noteChange();
}

void UIView::setUserInteractionEnabled(bool isEnabled) {
  assertMainThread();
  isUserInteractionEnabled_ = isEnabled;
  noteChange();
}

void UIView::addSubview(std::shared_ptr<UIView> view) {
  assertMainThread();
  insertSubview(std::move(view), std::numeric_limits<std::size_t>::max());
}

void UIView::insertSubview(std::shared_ptr<UIView> view, std::size_t at) {
  assertMainThread();
  const bool isMistake = view == nullptr || isDescendantOf(*view);
  assert(!isMistake && "a view cannot be inside itself");
  if (isMistake) return;
  const auto alive = shared_from_this();
  // A holder of its own, since the caller's may be an element of the list that changes here.
  const std::shared_ptr<UIView> added = std::move(view);
  const auto from = added->window();
  added->detach();
  added->superview_ = alive;
  subviews_.insert(subviews_.begin() + static_cast<std::ptrdiff_t>(std::min(at, subviews_.size())), added);
  noteFitChange();
  added->didMove(from);
}

void UIView::removeFromSuperview() {
  assertMainThread();
  if (superview_.expired()) return;
  // The superview may be the last holder.
  const auto alive = shared_from_this();
  const auto from = window();
  detach();
  didMove(from);
}

void UIView::detach() {
  const std::shared_ptr<UIView> parent = superview();
  if (parent == nullptr) return;
  const auto found = std::ranges::find(parent->subviews_, this, [](const auto& view) { return view.get(); });
  const std::shared_ptr<UIView> alive = std::move(*found);
  parent->subviews_.erase(found);
  superview_.reset();
  parent->noteFitChange();
}

void UIView::didMove(const std::shared_ptr<UIWindow>& from) {
  didMoveToSuperview();
  if (from == window()) return;
  notifyOfWindow();
  if (from != nullptr) from->cancelStrayGestures();
}

void UIView::notifyOfWindow() {
  didMoveToWindow();
  const auto subviews = subviews_;
  for (const auto& view : subviews) {
    // An earlier one may have changed the tree.
    if (view->superview_.lock().get() == this) view->notifyOfWindow();
  }
}

void UIView::bringSubviewToFront(const std::shared_ptr<UIView>& view) {
  assertMainThread();
  const auto found = std::ranges::find(subviews_, view);
  if (found == subviews_.end()) return;
  std::rotate(found, found + 1, subviews_.end());
  placesByFit() ? noteFitChange() : noteChange();
}

bool UIView::isDescendantOf(const UIView& view) const {
  if (this == &view) return true;
  for (auto ancestor = superview(); ancestor != nullptr; ancestor = ancestor->superview()) {
    if (ancestor.get() == &view) return true;
  }
  return false;
}

std::shared_ptr<UIWindow> UIView::window() const {
  auto root = std::const_pointer_cast<UIView>(weak_from_this().lock());
  while (root != nullptr) {
    const auto parent = root->superview();
    if (parent == nullptr) break;
    root = parent;
  }
  return std::dynamic_pointer_cast<UIWindow>(root);
}

void UIView::noteChange() const {
  const auto window = this->window();
  if (window == nullptr) return;
  if (const auto host = window->delegate_.lock()) host->viewTreeDidChange();
}

void UIView::addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> recognizer) {
  assertMainThread();
  assert(recognizer != nullptr);
  if (recognizer == nullptr) return;
  const auto previous = recognizer->view();
  if (previous.get() == this) return;
  if (previous != nullptr) previous->removeGestureRecognizer(recognizer);
  // The action of a gesture that this has cancelled may have put it somewhere.
  if (recognizer->view() != nullptr) return;
  recognizer->view_ = weak_from_this();
  gestureRecognizers_.push_back(std::move(recognizer));
}

void UIView::removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer) {
  assertMainThread();
  const auto found = std::ranges::find(gestureRecognizers_, recognizer);
  if (found == gestureRecognizers_.end()) return;
  const auto removed = std::move(*found);
  gestureRecognizers_.erase(found);
  removed->view_.reset();
  removed->reset();
}

}  // namespace corvane
