/// A mouse that tests and tours move: real events of the X server, so that everything from there on is what users get.
#pragma once

#include <memory>
#include <string>

#include "corvane/platform/geometry/geometry.h"

struct _GtkWidget;
using GtkWidget = _GtkWidget;

namespace corvane::demo {

/// The events arrive some time later, so wait for what they bring about. There is one pointer on a display: tests that
/// use it run alone on theirs.
class PointerInput {
 public:
  /// Points are in the coordinates of the widget, which is on screen. Null, and a reason, where there is no X server
  /// with the test extension.
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

 private:
  struct Connection;
  explicit PointerInput(std::unique_ptr<Connection> connection);

  std::unique_ptr<Connection> connection_;
};

}  // namespace corvane::demo
