/// A mouse, keys and fingers that tests and tours move: real events of the display's server, so that everything from
/// there on is what users get.
#pragma once

#include <memory>
#include <set>
#include <span>
#include <string>

#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/touch_event.h"

struct _GtkWidget;
using GtkWidget = _GtkWidget;

namespace corvane::demo {

class InputDevice;

/// The events arrive some time later, so wait for what they bring about. There is one pointer on a display: tests that
/// use it run alone on theirs.
class PointerInput {
 public:
  /// Points are in the coordinates of the widget, which is on screen. Null, and a reason, where there is neither an X
  /// server with the test extension nor a compositor with our input module.
  [[nodiscard]] static std::unique_ptr<PointerInput> open(GtkWidget* widget, std::string& reason);
  PointerInput(const PointerInput&) = delete;
  PointerInput& operator=(const PointerInput&) = delete;
  /// Releases what is still pressed.
  ~PointerInput();

  void move(CGPoint to);
  void moveBy(CGPoint way);
  void press(int button = 1);
  void release(int button = 1);
  void click(CGPoint at);
  /// Moves there in steps from where the pointer is; what is pressed stays so.
  void moveInSteps(CGPoint to, int steps = 8);

  /// Presses keys one after the other and releases them in the opposite order. They are the toolkit's key values.
  void type(std::span<const unsigned> chord);

  [[nodiscard]] bool hasFingers() const;
  /// The system takes all fingers away where one is cancelled.
  void touch(int finger, TouchPhase phase, CGPoint at = {});

 private:
  PointerInput(GtkWidget* widget, std::unique_ptr<InputDevice> device);

  GtkWidget* widget_;
  std::unique_ptr<InputDevice> device_;
  CGPoint position_;
  std::set<int> pressed_;
};

}  // namespace corvane::demo
