#include "corvane/platform/views/ui_view.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <utility>

#include "corvane/platform/views/ui_window.h"

namespace corvane {

namespace {

/// One axis of a view inside its superview: the margin before it, its own length, the margin after it.
struct Span {
  CGFloat before;
  CGFloat length;
  CGFloat after;
};

/// Spreads the growth of the superview over the flexible lengths, in proportion to what they are. Lengths that are all
/// zero have no proportion and take equal shares.
Span spread(Span span, CGFloat growth, bool isBeforeFlexible, bool isLengthFlexible, bool isAfterFlexible) {
  struct Share {
    CGFloat* length;
    bool isFlexible;
  };
  const std::array shares{Share{&span.before, isBeforeFlexible}, Share{&span.length, isLengthFlexible},
                          Share{&span.after, isAfterFlexible}};
  CGFloat total = 0;
  int count = 0;
  for (const Share& share : shares) {
    if (!share.isFlexible) continue;
    total += *share.length;
    ++count;
  }
  for (const Share& share : shares) {
    if (share.isFlexible) *share.length += growth * (total > 0 ? *share.length / total : 1.0 / count);
  }
  return span;
}

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

UIView::~UIView() = default;

CGAffineTransform UIView::transformToSuperview() const {
  return CGAffineTransform::makeTranslation(-bounds_.midX(), -bounds_.midY())
      .concatenated(transform_)
      .concatenated(CGAffineTransform::makeTranslation(center_.x, center_.y));
}

CGRect UIView::frame() const {
  if (transform_.isIdentity()) {
    return {{center_.x - bounds_.size.width / 2, center_.y - bounds_.size.height / 2}, bounds_.size};
  }
  const CGSize box = boundingBox(bounds_.size, transform_).size;
  return {{center_.x - box.width / 2, center_.y - box.height / 2}, box};
}

void UIView::setFrame(CGRect frame) {
  const CGSize from = bounds_.size;
  center_ = {frame.midX(), frame.midY()};
  bounds_.size = transform_.isIdentity() ? frame.size : sizeBefore(transform_, frame.size, from);
  resizeSubviews(from);
  noteChange();
}

void UIView::setBounds(CGRect bounds) {
  const CGSize from = bounds_.size;
  bounds_ = bounds;
  resizeSubviews(from);
  noteChange();
}

void UIView::setCenter(CGPoint center) {
  center_ = center;
  noteChange();
}

void UIView::setTransform(const CGAffineTransform& transform) {
  transform_ = transform;
  noteChange();
}

void UIView::setHidden(bool isHidden) {
  isHidden_ = isHidden;
  noteChange();
}

void UIView::setUserInteractionEnabled(bool isEnabled) { isUserInteractionEnabled_ = isEnabled; }

void UIView::resizeSubviews(CGSize from) {
  if (from == bounds_.size) return;
  // A subview may change the tree when it is resized.
  const auto subviews = subviews_;
  for (const auto& view : subviews) view->autoresize(from, bounds_.size);
}

void UIView::autoresize(CGSize superviewFrom, CGSize superviewTo) {
  using enum UIViewAutoresizing;
  if (autoresizingMask_ == none) return;
  const auto isFlexible = [&](UIViewAutoresizing part) { return contains(autoresizingMask_, part); };
  const CGRect now = frame();
  const Span across =
      spread({now.minX(), now.size.width, superviewFrom.width - now.maxX()}, superviewTo.width - superviewFrom.width,
             isFlexible(flexibleLeftMargin), isFlexible(flexibleWidth), isFlexible(flexibleRightMargin));
  const Span down = spread({now.minY(), now.size.height, superviewFrom.height - now.maxY()},
                           superviewTo.height - superviewFrom.height, isFlexible(flexibleTopMargin),
                           isFlexible(flexibleHeight), isFlexible(flexibleBottomMargin));
  setFrame({{across.before, down.before}, {across.length, down.length}});
}

void UIView::addSubview(std::shared_ptr<UIView> view) {
  const bool isMistake = view == nullptr || isDescendantOf(*view);
  assert(!isMistake && "a view cannot be inside itself");
  if (isMistake) return;
  view->removeFromSuperview();
  view->superview_ = weak_from_this();
  subviews_.push_back(std::move(view));
  noteChange();
}

void UIView::removeFromSuperview() {
  const std::shared_ptr<UIView> parent = superview();
  if (parent == nullptr) return;
  const auto place = std::ranges::find(parent->subviews_, this, [](const auto& view) { return view.get(); });
  // The superview may be the last holder.
  const std::shared_ptr<UIView> alive = std::move(*place);
  parent->subviews_.erase(place);
  superview_.reset();
  parent->noteChange();
}

void UIView::bringSubviewToFront(const std::shared_ptr<UIView>& view) {
  const auto place = std::ranges::find(subviews_, view);
  if (place == subviews_.end()) return;
  std::rotate(place, place + 1, subviews_.end());
  noteChange();
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
  if (const auto host = window->host_.lock()) host->viewTreeDidChange();
}

}  // namespace corvane
