#include "corvane/platform/views/ui_pan_gesture_recognizer.h"

#include <utility>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

std::shared_ptr<UIPanGestureRecognizer> UIPanGestureRecognizer::create(Action action) {
  return std::make_shared<UIPanGestureRecognizer>(ConstructionKey{}, std::move(action));
}

UIPanGestureRecognizer::UIPanGestureRecognizer(ConstructionKey, Action action)
    : UIGestureRecognizer([action = std::move(action)](UIGestureRecognizer& recognizer) {
        if (action) action(static_cast<UIPanGestureRecognizer&>(recognizer));
      }) {}

CGPoint UIPanGestureRecognizer::translation(const UIView* in) const {
  const CGPoint to = location(in);
  const CGPoint from = in != nullptr ? in->convertPointFrom(startLocation(), nullptr) : startLocation();
  return {to.x - from.x, to.y - from.y};
}

void UIPanGestureRecognizer::fingerMoved() {
  if (state() != State::possible) {
    setState(State::changed);
  } else if (hasMovedFar()) {
    setState(State::began);
  }
}

void UIPanGestureRecognizer::fingerLifted() { setState(state() == State::possible ? State::failed : State::ended); }

void UIPanGestureRecognizer::otherFingerCame() {}

}  // namespace corvane
