/// Tapping with one finger.
#pragma once

#include "corvane/platform/views/ui_gesture_recognizer.h"

namespace corvane {

/// Recognises one finger that comes down and leaves again, having moved less than ten points. Its action is called
/// once, with the state ended.
class CORVANE_EXPORT UITapGestureRecognizer final : public UIGestureRecognizer {
 public:
  using Action = std::function<void(UITapGestureRecognizer&)>;

  static std::shared_ptr<UITapGestureRecognizer> create(Action action);
  UITapGestureRecognizer(ConstructionKey key, Action action);

 private:
  void fingerMoved() override;
  void fingerLifted() override;
  void otherFingerCame() override;
};

}  // namespace corvane
