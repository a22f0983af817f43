/// An authorisation that somebody says, for systems that keep no record of their own.
#pragma once

#include "corvane/platform/capture/capture_authorization.h"

namespace corvane {

/// Remembers what it was told; `notDetermined` until then.
class StoredAuthorization final : public CaptureAuthorization {
 public:
  [[nodiscard]] AVAuthorizationStatus status(AVMediaType mediaType) const override {
    return mediaType == AVMediaType::video ? video_ : audio_;
  }
  void set(AVMediaType mediaType, AVAuthorizationStatus status) {
    (mediaType == AVMediaType::video ? video_ : audio_) = status;
  }

 private:
  AVAuthorizationStatus video_ = AVAuthorizationStatus::notDetermined;
  AVAuthorizationStatus audio_ = AVAuthorizationStatus::notDetermined;
};

}  // namespace corvane
