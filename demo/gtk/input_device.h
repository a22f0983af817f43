/// What moves the mouse, fingers and keys of a display, as its own devices would.
#pragma once

#include <memory>
#include <string>

#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/touch_event.h"

struct _GdkSurface;
using GdkSurface = _GdkSurface;
struct _GdkDisplay;
using GdkDisplay = _GdkDisplay;

namespace corvane::demo {

/// Points are in the logical pixels of a window's surface.
class InputDevice {
 public:
  virtual ~InputDevice() = default;
  virtual void move(GdkSurface* surface, CGPoint to) = 0;
  virtual void setButton(int button, bool isDown) = 0;
  /// The key is one of the toolkit's key values.
  virtual void setKey(unsigned key, bool isDown) = 0;
  [[nodiscard]] virtual bool hasFingers() const { return false; }
  /// The system takes all fingers away where one is cancelled.
  virtual void touch(int /*finger*/, TouchPhase /*phase*/, CGPoint /*point*/) {}
};

/// Null, and a reason, where the display is none of an X server with the test extension.
[[nodiscard]] std::unique_ptr<InputDevice> openX11Input(GdkDisplay* display, std::string& reason);
/// Null where the program does not run under `tools/wayland/run.sh`.
[[nodiscard]] std::unique_ptr<InputDevice> openWaylandInput();

}  // namespace corvane::demo
