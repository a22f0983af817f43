#include "corvane/platform/engine/key_gestures.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <ranges>

#include "corvane/platform/views/ui_pan_gesture_recognizer.h"

namespace corvane::engine {

namespace {

/// A finger that no device has.
constexpr std::uint64_t keyFinger = std::numeric_limits<std::uint64_t>::max();
/// Enough for a drag to begin.
constexpr CGFloat firstStep = 40;
constexpr std::chrono::milliseconds moveDuration{250};

CGPoint middleOf(const UIView& view) {
  return view.convertPoint({view.bounds().midX(), view.bounds().midY()}, nullptr);
}

bool canBeDragged(const UIView& view) {
  return std::ranges::any_of(view.gestureRecognizers(), [](const auto& recognizer) {
    return std::dynamic_pointer_cast<UIPanGestureRecognizer>(recognizer) != nullptr;
  });
}

bool fills(const UIView& view, const UIWindow& window) {
  const CGSize size = shownBox(view).size;
  return size.width >= window.bounds().size.width && size.height >= window.bounds().size.height;
}

CGPoint wayTo(KeySide side, const UIView& view, CGSize room) {
  const CGPoint center = view.center();
  switch (side) {
    case KeySide::left:
      return {-center.x, 0};
    case KeySide::right:
      return {room.width - center.x, 0};
    case KeySide::top:
      return {0, -center.y};
    case KeySide::bottom:
      return {0, room.height - center.y};
  }
  return {};
}

}  // namespace

std::shared_ptr<UIView> floatingView(UIWindow& window) {
  const auto find = [&window](const auto& self, const UIView& view) -> std::shared_ptr<UIView> {
    for (const auto& subview : std::views::reverse(view.subviews())) {
      if (auto found = self(self, *subview)) return found;
      if (!canBeDragged(*subview) || fills(*subview, window)) continue;
      const auto hit = window.hitTest(middleOf(*subview));
      if (hit != nullptr && hit->isDescendantOf(*subview)) return subview;
    }
    return nullptr;
  };
  return find(find, window);
}

CGRect shownBox(const UIView& view) {
  const UIViewPresentation shown = view.presentation();
  const auto superview = view.superview();
  const auto onWindow = [&](CGPoint point) {
    return superview->convertPoint(shown.transformToSuperview().apply(point), nullptr);
  };
  const CGPoint first = onWindow(shown.bounds.origin);
  const CGPoint last = onWindow({shown.bounds.maxX(), shown.bounds.maxY()});
  return {first, {last.x - first.x, last.y - first.y}};
}

void dragByKey(UIWindow& window, UIView& view, KeySide side) {
  const CGPoint way = wayTo(side, view, view.superview()->bounds().size);
  const CGPoint from = middleOf(view);
  const auto send = [&](TouchPhase phase, CGPoint at) {
    window.sendTouch({.identifier = keyFinger, .phase = phase, .location = at});
  };
  // The first movement only begins a drag, and is no part of its way.
  const CGPoint grip{from.x + (way.x > 0 ? firstStep : -firstStep), from.y};
  const CGPoint to{grip.x + way.x, grip.y + way.y};
  // A finger's movements show at once, a key's are one long way.
  UIView::animate(moveDuration, [&] {
    send(TouchPhase::began, from);
    send(TouchPhase::moved, grip);
    send(TouchPhase::moved, to);
    send(TouchPhase::ended, to);
  });
}

bool tapByKey(UIWindow& window, const UIView& view) {
  const CGPoint middle = middleOf(view);
  window.sendTouch({.identifier = keyFinger, .phase = TouchPhase::began, .location = middle});
  return window.sendTouch({.identifier = keyFinger, .phase = TouchPhase::ended, .location = middle}) ==
         TouchOutcome::claimed;
}

}  // namespace corvane::engine
