/// Brings the touches of one window to its gesture recognizers.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "corvane/platform/views/touch_event.h"

namespace corvane {

class UIGestureRecognizer;
class UIWindow;

/// Finds out whom a touch reaches when it comes down, and lets those recognizers have it to its end.
///
/// Each event first changes the state of everything that it concerns and only then calls actions. So an action may do
/// whatever it likes, also send further touches. Those are handled inside its call.
///
/// Ownership: owned by its window, which must be kept alive while `send` runs.
/// Threads:   main thread only.
/// Failure:   events of fingers that are not down are ignored; one that comes down again is cancelled first.
class TouchRouter {
 public:
  explicit TouchRouter(UIWindow& window) : window_(window) {}
  TouchRouter(const TouchRouter&) = delete;
  TouchRouter& operator=(const TouchRouter&) = delete;
  /// Cancels what is going on.
  ~TouchRouter();

  TouchOutcome send(const UITouchEvent& event);
  /// Cancels the gestures whose views have left the window.
  void cancelStrays();

 private:
  using Recognizers = std::vector<std::shared_ptr<UIGestureRecognizer>>;
  struct Touch {
    std::uint64_t identifier;
    /// Never used again, unlike the identifier.
    std::uint64_t number;
    CGPoint location;
    Recognizers recognizers;
    bool isClaimed = false;
    /// Whether the backend knows that no recognizer wants it.
    bool isGiven = false;
  };

  [[nodiscard]] std::shared_ptr<Touch> find(std::uint64_t identifier) const;
  [[nodiscard]] Recognizers recognizersAt(CGPoint location) const;
  std::shared_ptr<Touch> begin(const UITouchEvent& event);
  void move(Touch& touch, CGPoint location);
  void end(const std::shared_ptr<Touch>& touch, TouchPhase phase);
  /// Lets each recognizer of a touch have something of it, and sees what comes of it.
  template <class Step>
  void forEach(Touch& touch, Step step);
  /// Gives a recognizer that has recognised its gesture all the touches that it follows.
  void claimFor(UIGestureRecognizer& winner);
  void callActions();
  [[nodiscard]] TouchOutcome outcomeOf(Touch& touch, TouchPhase phase) const;

  UIWindow& window_;
  std::vector<std::shared_ptr<Touch>> touches_;
  /// Those whose actions are to be called, in order.
  std::deque<std::shared_ptr<UIGestureRecognizer>> due_;
};

}  // namespace corvane
