#include "corvane/platform/views/touch_router.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include "corvane/platform/foundation/main_thread_state.h"
#include "corvane/platform/views/ui_gesture_recognizer.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane {

namespace {

using State = UIGestureRecognizerState;

}  // namespace

TouchRouter::~TouchRouter() {
  for (const auto& touch : std::exchange(touches_, {})) {
    for (const auto& recognizer : touch->recognizers) {
      if (recognizer->follows(touch->number)) recognizer->reset();
    }
  }
}

TouchOutcome TouchRouter::send(const UITouchEvent& event) {
  // Sent by an action: what is due from before comes before what this event brings.
  callActions();
  cancelStrays();
  auto touch = find(event.identifier);
  if (event.phase == TouchPhase::began) {
    // The actions of one that is cancelled may send another.
    for (; touch != nullptr; touch = find(event.identifier)) end(touch, TouchPhase::cancelled);
    touch = begin(event);
  } else if (touch == nullptr) {
    return TouchOutcome::ignored;
  } else {
    if (event.phase != TouchPhase::cancelled) move(*touch, event.location);
    if (event.phase != TouchPhase::moved) end(touch, event.phase);
  }
  return outcomeOf(*touch, event.phase);
}

void TouchRouter::cancelStrays() {
  // Actions may send touches that come and go meanwhile.
  const auto touches = touches_;
  for (const auto& touch : touches) {
    for (const auto& recognizer : touch->recognizers) {
      if (!recognizer->follows(touch->number)) continue;
      const auto view = recognizer->view();
      if (view == nullptr || view->window().get() != &window_) recognizer->reset();
    }
  }
}

std::shared_ptr<TouchRouter::Touch> TouchRouter::find(std::uint64_t identifier) const {
  const auto found = std::ranges::find(touches_, identifier, &Touch::identifier);
  return found != touches_.end() ? *found : nullptr;
}

TouchRouter::Recognizers TouchRouter::recognizersAt(CGPoint location) const {
  Recognizers recognizers;
  for (auto view = window_.hitTest(location); view != nullptr; view = view->superview()) {
    std::ranges::copy_if(view->gestureRecognizers(), std::back_inserter(recognizers), &UIGestureRecognizer::isEnabled);
  }
  return recognizers;
}

std::shared_ptr<TouchRouter::Touch> TouchRouter::begin(const UITouchEvent& event) {
  const auto touch = std::make_shared<Touch>(
      Touch{event.identifier, ++mainThreadState().lastTouch, event.location, recognizersAt(event.location)});
  touch->isClaimed = std::ranges::any_of(touch->recognizers, &UIGestureRecognizer::isGoingOn);
  touches_.push_back(touch);
  for (const auto& recognizer : touch->recognizers) {
    recognizer->begin(touch->number, event.location, touch->isClaimed);
  }
  return touch;
}

void TouchRouter::move(Touch& touch, CGPoint location) {
  if (touch.location == location) return;
  touch.location = location;
  forEach(touch, [&](UIGestureRecognizer& recognizer) { recognizer.move(touch.number, location); });
  callActions();
}

void TouchRouter::end(const std::shared_ptr<Touch>& touch, TouchPhase phase) {
  // The action of its last movement may have ended it already.
  if (std::ranges::find(touches_, touch) == touches_.end()) return;
  forEach(*touch, [&](UIGestureRecognizer& recognizer) {
    if (phase == TouchPhase::ended) {
      recognizer.lift(touch->number);
    } else {
      recognizer.cancel(touch->number);
    }
  });
  std::erase(touches_, touch);
  for (const auto& recognizer : touch->recognizers) recognizer->forget(touch->number);
  callActions();
  for (const auto& recognizer : touch->recognizers) recognizer->rest();
}

template <class Step>
void TouchRouter::forEach(Touch& touch, Step step) {
  for (const auto& recognizer : touch.recognizers) {
    if (!recognizer->follows(touch.number)) continue;
    const bool wasPossible = recognizer->state() == State::possible;
    step(*recognizer);
    if (!recognizer->isActionDue()) continue;
    if (wasPossible) claimFor(*recognizer);
    due_.push_back(recognizer);
  }
}

void TouchRouter::claimFor(UIGestureRecognizer& winner) {
  for (const auto& touch : touches_) {
    if (!winner.follows(touch->number)) continue;
    touch->isClaimed = true;
    for (const auto& other : touch->recognizers) {
      if (other.get() == &winner || !other->follows(touch->number)) continue;
      other->failOrCancel();
      if (other->isActionDue()) due_.push_back(other);
    }
  }
}

void TouchRouter::callActions() {
  while (!due_.empty()) {
    const auto recognizer = std::move(due_.front());
    due_.pop_front();
    recognizer->callDueAction();
  }
}

TouchOutcome TouchRouter::outcomeOf(Touch& touch, TouchPhase phase) const {
  if (touch.isClaimed) return TouchOutcome::claimed;
  if (touch.isGiven) return TouchOutcome::ignored;
  const bool isUndecided = std::ranges::any_of(touch.recognizers, [&](const auto& recognizer) {
    return recognizer->follows(touch.number) && recognizer->state() == State::possible;
  });
  if (isUndecided) return TouchOutcome::held;
  touch.isGiven = true;
  const bool wasHeld = phase == TouchPhase::moved || phase == TouchPhase::ended;
  return wasHeld ? TouchOutcome::released : TouchOutcome::ignored;
}

}  // namespace corvane
