/// Whether this app may use the camera and the microphone.
#pragma once

#include "corvane/export.h"

namespace corvane {

enum class AVMediaType { video, audio };

enum class AVAuthorizationStatus {
  notDetermined,  ///< nobody has asked the user yet
  restricted,     ///< a policy of the device forbids it
  denied,         ///< the user has refused
  authorized,     ///< the user has agreed
};

/// Knows what the user has allowed; a part of the backend.
///
/// Ownership: owned by the backend that installed it. Threads: main thread only.
class CORVANE_EXPORT CaptureAuthorization {
 public:
  virtual ~CaptureAuthorization();
  [[nodiscard]] virtual AVAuthorizationStatus status(AVMediaType mediaType) const = 0;
};

/// The capture devices of the system.
class CORVANE_EXPORT AVCaptureDevice {
 public:
  /// What the installed backend knows; `notDetermined` without one.
  [[nodiscard]] static AVAuthorizationStatus authorizationStatus(AVMediaType mediaType);
};

}  // namespace corvane
