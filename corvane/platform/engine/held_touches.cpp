#include "corvane/platform/engine/held_touches.h"

#include <algorithm>

#include "corvane/platform/web/wk_web_view.h"

namespace corvane::engine {

HeldTouches::Verdict HeldTouches::handle(const UITouchEvent& touch) {
  const std::uint64_t identifier = touch.identifier;
  const bool isBeginning = touch.phase == TouchPhase::began;
  if (isBeginning) {
    // Gestures have one finger. A page that saw only the others would make a gesture of them.
    const Owner owner = isBusy(identifier) || wouldPinch(touch) ? Owner::nobody : Owner::undecided;
    touches_[identifier] = {owner, TouchAnchor(*window_, touch.location)};
  }
  if (!touches_.contains(identifier)) return Verdict::passes;
  const TouchOutcome outcome = window_->sendTouch(touch);
  // Actions may have made the surface disappear.
  const auto found = touches_.find(identifier);
  if (found == touches_.end()) return Verdict::ends;

  Owner& owner = found->second.owner;
  const bool wasUndecided = owner == Owner::undecided;
  const bool isReleased = wasUndecided && outcome == TouchOutcome::released;
  if (wasUndecided && outcome == TouchOutcome::claimed) owner = Owner::views;
  if (isReleased) owner = Owner::underneath;
  // Nobody has seen anything yet of a touch that is cancelled while it is held.
  if (wasUndecided && outcome == TouchOutcome::ignored) owner = isBeginning ? Owner::underneath : Owner::nobody;
  const bool goesOn = owner == Owner::underneath;
  const bool isTapLost =
      touch.phase == TouchPhase::ended && identifier != mouseTouch && found->second.anchor.hasMoved();
  if (touch.phase == TouchPhase::ended || touch.phase == TouchPhase::cancelled) touches_.erase(found);
  if (isReleased) return isTapLost ? Verdict::ends : Verdict::playedFromStart;
  if (goesOn && isTapLost) return Verdict::leaves;
  return goesOn ? Verdict::passes : Verdict::ends;
}

HeldTouches::Verdict HeldTouches::handleOtherButton(unsigned button, bool isPress) {
  if (!isPress) return keptButtons_.erase(button) > 0 ? Verdict::ends : Verdict::passes;
  if (!isBusy()) return Verdict::passes;
  keptButtons_.insert(button);
  return Verdict::ends;
}

bool HeldTouches::isBusy(std::optional<std::uint64_t> besides) const {
  return std::ranges::any_of(touches_, [&](const auto& touch) {
    const Owner owner = touch.second.owner;
    return (owner == Owner::undecided || owner == Owner::views) && touch.first != besides;
  });
}

bool HeldTouches::isOverFixedPage(CGPoint location) const {
  const auto page = std::dynamic_pointer_cast<WKWebView>(window_->hitTest(location));
  return page != nullptr && !page->isScrollEnabled();
}

bool HeldTouches::wouldPinch(const UITouchEvent& touch) const {
  const bool isSecond = std::ranges::any_of(touches_, [&](const auto& other) {
    return other.second.owner == Owner::underneath && other.first != touch.identifier;
  });
  return isSecond && isOverFixedPage(touch.location);
}

void HeldTouches::cancelAll() {
  std::vector<std::uint64_t> cancelled;
  for (auto& [identifier, touch] : touches_) {
    if (touch.owner == Owner::underneath) continue;
    // Should its end come by after all, the page is not to see it.
    touch.owner = Owner::nobody;
    cancelled.push_back(identifier);
  }
  for (const std::uint64_t identifier : cancelled) {
    window_->sendTouch({.identifier = identifier, .phase = TouchPhase::cancelled, .location = {}});
  }
}

}  // namespace corvane::engine
