/// Touches on their way from a backend into a window.
#pragma once

#include <cstdint>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

enum class TouchPhase : std::uint8_t { began, moved, ended, cancelled };

/// One thing that one finger does.
struct UITouchEvent {
  /// Tells the fingers apart that are down at the same time; may be used again once its finger has left.
  std::uint64_t identifier = 0;
  TouchPhase phase = TouchPhase::began;
  /// In the window's own coordinates.
  CGPoint location;
};

/// Whose a touch is, as far as is known after an event of it. What lies under our views (a page, a widget of the host
/// app) may only have it when no recognizer wants it. So a backend keeps a touch back while it is held.
enum class TouchOutcome : std::uint8_t {
  /// Not ours, or no longer: the event goes on to what lies under. A held touch that is cancelled also ends so.
  ignored,
  /// Not known yet: keep the event back.
  held,
  /// A recognizer has it: it and all that was held are for nobody else, to its end.
  claimed,
  /// Told once: no recognizer wants it after all. What was held and this event are to be played to what lies under;
  /// the touch's further events, if any, are ignored.
  released,
};

}  // namespace corvane
