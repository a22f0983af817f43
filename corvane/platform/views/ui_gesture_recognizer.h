/// What touches mean.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

class UIView;

/// Where a gesture stands. One that goes on passes through began, any number of changed, and ended or cancelled; one
/// that happens at once through ended alone. Failed means that the touches were none of its gestures. When its fingers
/// have left, a recognizer is back at possible.
enum class UIGestureRecognizerState : std::uint8_t {
  possible = 0,
  began = 1,
  changed = 2,
  ended = 3,
  cancelled = 4,
  failed = 5,
};

/// Watches the touches on its view and below it, and calls its action for every state but possible and failed.
///
/// It follows one finger at a time, from when the first one comes down until all have left. Of the recognizers that a
/// touch reaches, the first to recognise its gesture makes the others fail.
///
/// Ownership: shared by its view and whoever made it; it knows its view weakly.
/// Threads:   main thread only.
/// Failure:   none. The action may do anything, also remove the view or this recognizer; it must not throw.
class CORVANE_EXPORT UIGestureRecognizer : public std::enable_shared_from_this<UIGestureRecognizer> {
 public:
  using State = UIGestureRecognizerState;
  using Action = std::function<void(UIGestureRecognizer&)>;

  UIGestureRecognizer(const UIGestureRecognizer&) = delete;
  UIGestureRecognizer& operator=(const UIGestureRecognizer&) = delete;
  virtual ~UIGestureRecognizer();

  [[nodiscard]] State state() const { return state_; }
  /// The view that it is on; null for none.
  [[nodiscard]] std::shared_ptr<UIView> view() const { return view_.lock(); }
  /// Where its finger is or was last, in the coordinates of a view, or of the window for null.
  [[nodiscard]] CGPoint location(const UIView* in) const;

  [[nodiscard]] bool isEnabled() const { return isEnabled_; }
  /// Disabling it in the middle of a gesture cancels the gesture, inside this call.
  void setEnabled(bool isEnabled);

 protected:
  /// Lets subclasses make themselves through `std::make_shared` while nobody else can.
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };
  explicit UIGestureRecognizer(Action action) : action_(std::move(action)) {}

  /// Whether a finger has moved so far that it means a movement: 10 points of the window.
  [[nodiscard]] bool hasMovedFar() const;
  [[nodiscard]] CGPoint startLocation() const { return start_; }
  [[nodiscard]] CGPoint currentLocation() const { return location_; }
  void setState(State state);

 private:
  friend class TouchRouter;
  friend class UIView;

  /// The finger that it follows has moved or left while the gesture was possible or going on.
  virtual void fingerMoved() = 0;
  virtual void fingerLifted() = 0;
  /// Another finger has come down while the gesture was possible.
  virtual void otherFingerCame() = 0;

  // The router's side. Touches are known by a number that is never used again. None of these calls the action.
  void begin(std::uint64_t touch, CGPoint location, bool isTaken);
  void move(std::uint64_t touch, CGPoint location);
  void lift(std::uint64_t touch);
  void cancel(std::uint64_t touch);
  void forget(std::uint64_t touch) { std::erase(touches_, touch); }
  /// Another recognizer has got the touch.
  void failOrCancel();
  [[nodiscard]] bool follows(std::uint64_t touch) const;
  [[nodiscard]] bool isGoingOn() const { return state_ == State::began || state_ == State::changed; }
  [[nodiscard]] bool isLive() const { return state_ == State::possible || isGoingOn(); }

  [[nodiscard]] bool isActionDue() const { return isActionDue_; }
  void callDueAction();
  void callAction();
  /// Back to possible once no finger is left.
  void rest();
  /// Ends what is going on and forgets all touches; the action is told when it knew of a gesture.
  void reset();

  Action action_;
  std::weak_ptr<UIView> view_;
  std::vector<std::uint64_t> touches_;
  std::uint64_t finger_ = 0;
  CGPoint start_;
  CGPoint location_;
  State state_ = State::possible;
  /// The state that the action was last called with in this sequence.
  State reported_ = State::possible;
  bool isActionDue_ = false;
  bool isEnabled_ = true;
};

}  // namespace corvane
