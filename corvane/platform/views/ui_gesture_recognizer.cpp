#include "corvane/platform/views/ui_gesture_recognizer.h"

#include <algorithm>
#include <cmath>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

UIGestureRecognizer::~UIGestureRecognizer() = default;

CGPoint UIGestureRecognizer::location(const UIView* in) const {
  return in != nullptr ? in->convertPointFrom(location_, nullptr) : location_;
}

bool UIGestureRecognizer::hasMovedFar() const {
  constexpr CGFloat slop = 10;
  return std::hypot(location_.x - start_.x, location_.y - start_.y) >= slop;
}

void UIGestureRecognizer::setEnabled(bool isEnabled) {
  assertMainThread();
  isEnabled_ = isEnabled;
  if (!isEnabled) reset();
}

void UIGestureRecognizer::setState(State state) {
  state_ = state;
  isActionDue_ = state != State::possible && state != State::failed;
}

void UIGestureRecognizer::begin(std::uint64_t touch, CGPoint location, bool isTaken) {
  const bool isFirst = touches_.empty();
  touches_.push_back(touch);
  if (isFirst) {
    finger_ = touch;
    start_ = location_ = location;
    state_ = reported_ = State::possible;
    if (isTaken) state_ = State::failed;
  } else if (state_ == State::possible) {
    otherFingerCame();
  }
}

void UIGestureRecognizer::move(std::uint64_t touch, CGPoint location) {
  if (touch != finger_ || !isLive()) return;
  location_ = location;
  fingerMoved();
}

void UIGestureRecognizer::lift(std::uint64_t touch) {
  if (touch == finger_ && isLive()) fingerLifted();
}

void UIGestureRecognizer::cancel(std::uint64_t touch) {
  if (touch == finger_) failOrCancel();
}

void UIGestureRecognizer::failOrCancel() {
  if (isLive()) setState(isGoingOn() ? State::cancelled : State::failed);
}

bool UIGestureRecognizer::follows(std::uint64_t touch) const {
  return std::ranges::find(touches_, touch) != touches_.end();
}

void UIGestureRecognizer::callDueAction() {
  if (isActionDue_) callAction();
}

void UIGestureRecognizer::callAction() {
  isActionDue_ = false;
  reported_ = state_;
  // The action may drop the last holder.
  const auto alive = shared_from_this();
  if (const Action action = action_) action(*this);
}

void UIGestureRecognizer::rest() {
  if (touches_.empty() && !isActionDue_) state_ = reported_ = State::possible;
}

void UIGestureRecognizer::reset() {
  touches_.clear();
  isActionDue_ = false;
  if (reported_ == State::began || reported_ == State::changed) {
    state_ = State::cancelled;
    callAction();
  }
  rest();
}

}  // namespace corvane
