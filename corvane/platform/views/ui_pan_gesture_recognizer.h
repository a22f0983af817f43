/// Dragging with one finger.
#pragma once

#include "corvane/platform/views/ui_gesture_recognizer.h"

namespace corvane {

/// Begins once a finger has moved ten points and goes on with its every movement; further fingers are ignored.
class CORVANE_EXPORT UIPanGestureRecognizer final : public UIGestureRecognizer {
 public:
  using Action = std::function<void(UIPanGestureRecognizer&)>;

  static std::shared_ptr<UIPanGestureRecognizer> create(Action action);
  UIPanGestureRecognizer(ConstructionKey key, Action action);

  /// How far the finger has come from where it came down, in the coordinates of a view, or of the window for null.
  [[nodiscard]] CGPoint translation(const UIView* in) const;

 private:
  void fingerMoved() override;
  void fingerLifted() override;
  void otherFingerCame() override;
};

}  // namespace corvane
