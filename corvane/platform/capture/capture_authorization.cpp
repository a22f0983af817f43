#include "corvane/platform/capture/capture_authorization.h"

namespace corvane {

namespace {

const CaptureAuthorization* installed = nullptr;

}  // namespace

CaptureAuthorization::~CaptureAuthorization() = default;

void CaptureAuthorization::install(const CaptureAuthorization* authorization) { installed = authorization; }

AVAuthorizationStatus AVCaptureDevice::authorizationStatus(AVMediaType mediaType) {
  return installed == nullptr ? AVAuthorizationStatus::notDetermined : installed->status(mediaType);
}

}  // namespace corvane
