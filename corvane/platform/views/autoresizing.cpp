#include "corvane/platform/views/autoresizing.h"

#include <algorithm>
#include <array>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

namespace {

/// A stretch of one axis, and the part of a mask that lets it grow.
struct Stretch {
  CGFloat length;
  UIViewAutoresizing part;
};

/// One axis of a view inside its superview: the margin before it, its own length, the margin after it.
using Span = std::array<Stretch, 3>;

/// Spreads the growth of the superview over the lengths that the mask makes flexible, in proportion to what they are.
/// Lengths that are all zero have no proportion and take equal shares.
Span spread(Span span, CGFloat growth, UIViewAutoresizing mask) {
  CGFloat total = 0;
  int count = 0;
  for (const Stretch& stretch : span) {
    if (!contains(mask, stretch.part)) continue;
    total += stretch.length;
    ++count;
  }
  for (Stretch& stretch : span) {
    if (contains(mask, stretch.part)) stretch.length += growth * (total > 0 ? stretch.length / total : 1.0 / count);
  }
  return span;
}

CGRect spreadFrame(CGRect frame, UIViewAutoresizing mask, CGSize from, CGSize to) {
  using enum UIViewAutoresizing;
  const Span across = spread({{{frame.minX(), flexibleLeftMargin},
                               {frame.size.width, flexibleWidth},
                               {from.width - frame.maxX(), flexibleRightMargin}}},
                             to.width - from.width, mask);
  const Span down = spread({{{frame.minY(), flexibleTopMargin},
                             {frame.size.height, flexibleHeight},
                             {from.height - frame.maxY(), flexibleBottomMargin}}},
                           to.height - from.height, mask);
  return {{across[0].length, down[0].length}, {across[1].length, down[1].length}};
}

}  // namespace

CGRect autoresizedFrame(CGRect frame, UIViewAutoresizing mask, CGSize superviewFrom, CGSize superviewTo) {
  CGRect result = spreadFrame(frame, mask, superviewFrom, superviewTo);
  result.size = {std::max(result.size.width, 0.0), std::max(result.size.height, 0.0)};
  return result;
}

void UIView::resizeSubviews(CGSize from) {
  if (from == bounds_.size) return;
  // A subview may change the tree when it is resized.
  const auto subviews = subviews_;
  for (const auto& view : subviews) {
    if (view->superview_.lock().get() == this) view->superviewDidResize(from);
  }
}

void UIView::superviewDidResize(CGSize from) {
  const auto parent = superview();
  if (autoresizingMask_ == UIViewAutoresizing::none || parent == nullptr) return;
  const CGSize to = parent->bounds().size;
  AutoresizingOrigin origin{frame(), from, autoresizingMask_, frame(), from};
  const AutoresizingOrigin* const known = autoresizingOrigin_.get();
  const bool goesOn = known != nullptr && known->mask == origin.mask && known->lastFrame == origin.lastFrame &&
                      known->lastSuperviewSize == from;
  if (goesOn) origin = *known;
  setFrame(autoresizedFrame(origin.frame, origin.mask, origin.superviewSize, to));
  // Read back, since a frame is calculated and may differ by a hair.
  origin.lastFrame = frame();
  origin.lastSuperviewSize = to;
  autoresizingOrigin_ = std::make_unique<AutoresizingOrigin>(origin);
}

}  // namespace corvane
