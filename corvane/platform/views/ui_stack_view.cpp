#include "corvane/platform/views/ui_stack_view.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

namespace {

/// The length that each may have at most for all to fit into the room.
CGFloat capFor(std::vector<CGFloat> lengths, CGFloat room) {
  std::ranges::sort(lengths);
  std::size_t left = lengths.size();
  for (const CGFloat length : lengths) {
    const auto share = room / static_cast<CGFloat>(left);
    if (length > share) return std::max(0.0, share);
    room -= length;
    --left;
  }
  return std::numeric_limits<CGFloat>::infinity();
}

}  // namespace

std::shared_ptr<UISpacerView> UISpacerView::create() { return std::make_shared<UISpacerView>(ConstructionKey{}); }

std::shared_ptr<UIStackView> UIStackView::create(StackAxis axis, StackStyle style) {
  return std::make_shared<UIStackView>(ConstructionKey{}, axis, style);
}

UIStackView::UIStackView(ConstructionKey key, StackAxis axis, StackStyle style)
    : UIView(key), axis_(axis), style_(style) {}

void UIStackView::setStyle(StackStyle style) {
  assertMainThread();
  if (std::exchange(style_, style) != style) noteFitChange();
}

UIStackView::Extent UIStackView::extentOf(CGSize size) const {
  return axis_ == StackAxis::horizontal ? Extent{size.width, size.height} : Extent{size.height, size.width};
}

CGSize UIStackView::sizeOf(Extent extent) const {
  return axis_ == StackAxis::horizontal ? CGSize{extent.along, extent.across} : CGSize{extent.across, extent.along};
}

std::vector<UIStackView::Item> UIStackView::fitted(Extent room) const {
  std::vector<Item> items;
  items.reserve(subviews().size());
  std::vector<CGFloat> lengths;
  lengths.reserve(subviews().size());
  for (const auto& view : subviews()) {
    if (view->isHidden()) continue;
    Item item{.view = view, .isSpacer = dynamic_cast<const UISpacerView*>(view.get()) != nullptr};
    if (!item.isSpacer) {
      item.extent = extentOf(view->sizeThatFits(sizeOf(room)));
      lengths.push_back(item.extent.along);
    }
    items.push_back(std::move(item));
  }
  if (!items.empty()) room.along -= style_.spacing * static_cast<CGFloat>(items.size() - 1);
  const CGFloat cap = capFor(std::move(lengths), room.along);
  for (Item& item : items) {
    if (item.extent.along <= cap) continue;
    item.extent = extentOf(item.view->sizeThatFits(sizeOf({cap, room.across})));
    item.extent.along = cap;
  }
  CGFloat used = 0;
  for (const Item& item : items) used += item.extent.along;
  const auto spacers = std::ranges::count_if(items, &Item::isSpacer);
  for (Item& item : items) {
    if (item.isSpacer) item.extent.along = std::max(0.0, room.along - used) / static_cast<CGFloat>(spacers);
  }
  return items;
}

CGSize UIStackView::sizeThatFits(CGSize offered) const {
  const CGFloat margins = 2 * style_.margin;
  const Extent room = extentOf({offered.width - margins, offered.height - margins});
  Extent used;
  const auto items = fitted(room);
  for (const Item& item : items) {
    // A spacer takes nothing where nobody has to be filled.
    if (!item.isSpacer) used.along += item.extent.along;
    used.across = std::max(used.across, item.extent.across);
  }
  if (!items.empty()) used.along += style_.spacing * static_cast<CGFloat>(items.size() - 1);
  const CGSize size = sizeOf(used);
  return {size.width + margins, size.height + margins};
}

void UIStackView::layoutSubviews() {
  const CGRect own = bounds();
  const CGFloat margins = 2 * style_.margin;
  const Extent room = extentOf({own.size.width - margins, own.size.height - margins});
  CGFloat place = style_.margin;
  for (Item& item : fitted(room)) {
    Extent& extent = item.extent;
    CGFloat across = style_.margin;
    if (style_.alignment == StackAlignment::fill) extent.across = std::max(0.0, room.across);
    if (style_.alignment == StackAlignment::center) across += (room.across - extent.across) / 2;
    if (style_.alignment == StackAlignment::trailing) across += room.across - extent.across;
    const CGSize corner = sizeOf({place, across});
    item.view->setFrame({{own.minX() + corner.width, own.minY() + corner.height}, sizeOf(extent)});
    place += extent.along + style_.spacing;
  }
}

bool UIStackView::pointInside(CGPoint point) const { return backgroundColor() && UIView::pointInside(point); }

}  // namespace corvane
