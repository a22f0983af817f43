#include "corvane/platform/capture/capture_authorization.h"

#include "corvane/platform/foundation/platform.h"

namespace corvane {

CaptureAuthorization::~CaptureAuthorization() = default;

AVAuthorizationStatus AVCaptureDevice::authorizationStatus(AVMediaType mediaType) {
  const Platform* const platform = PlatformInstallation::findPlatform();
  return platform == nullptr ? AVAuthorizationStatus::notDetermined : platform->capture->status(mediaType);
}

}  // namespace corvane
