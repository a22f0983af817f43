#include "corvane/platform/views/ui_tap_gesture_recognizer.h"

#include <utility>

namespace corvane {

std::shared_ptr<UITapGestureRecognizer> UITapGestureRecognizer::create(Action action) {
  return std::make_shared<UITapGestureRecognizer>(ConstructionKey{}, std::move(action));
}

UITapGestureRecognizer::UITapGestureRecognizer(ConstructionKey, Action action)
    : UIGestureRecognizer([action = std::move(action)](UIGestureRecognizer& recognizer) {
        if (action) action(static_cast<UITapGestureRecognizer&>(recognizer));
      }) {}

void UITapGestureRecognizer::fingerMoved() {
  if (hasMovedFar()) setState(State::failed);
}

void UITapGestureRecognizer::fingerLifted() { setState(State::ended); }

void UITapGestureRecognizer::otherFingerCame() { setState(State::failed); }

}  // namespace corvane
