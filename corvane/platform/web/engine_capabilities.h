/// What the engine of the installed backend can do here.
#pragma once

#include <functional>

#include "corvane/export.h"

namespace corvane {

/// Asked before a booking is loaded, it tells whether a call can take place on this machine.
struct EngineCapabilities {
  /// Whether pages have peer connections; without them no page can hold a call.
  bool hasPeerConnections = false;
  /// Whether a page would find one, made-up devices included. Says nothing about permission.
  bool hasCamera = false;
  bool hasMicrophone = false;
  /// Whether a graphics processor draws.
  bool hasHardwareDrawing = false;
  bool operator==(const EngineCapabilities&) const = default;
};

/// Finds out, which takes a fraction of a second, and calls the completion later on the main thread, once. The answer
/// is all false where nothing could be found out. A backend must be installed; its end drops the completion.
CORVANE_EXPORT void queryEngineCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion);

}  // namespace corvane
