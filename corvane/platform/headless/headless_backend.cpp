#include "corvane/platform/headless/headless_backend.h"

#include <stdexcept>
#include <utility>

namespace corvane::headless {

namespace {

class Factory final : public WebEngineFactory {
 public:
  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                        std::weak_ptr<WebEngineClient> client) override {
    return std::make_unique<HeadlessWebEngine>(configuration, std::move(client));
  }
};

class Authorization final : public CaptureAuthorization {
 public:
  AVAuthorizationStatus status(AVMediaType mediaType) const override {
    return mediaType == AVMediaType::video ? video_ : audio_;
  }
  void set(AVMediaType mediaType, AVAuthorizationStatus status) {
    (mediaType == AVMediaType::video ? video_ : audio_) = status;
  }

 private:
  AVAuthorizationStatus video_ = AVAuthorizationStatus::notDetermined;
  AVAuthorizationStatus audio_ = AVAuthorizationStatus::notDetermined;
};

}  // namespace

class Backend::Services {
 public:
  VirtualRunLoop runLoop;
  Factory factory;
  Authorization authorization;
};

std::unique_ptr<Backend> Backend::install() {
  if (RunLoop::hasMain()) throw std::logic_error("a backend is installed already");
  return std::unique_ptr<Backend>(new Backend);
}

Backend::Backend() : services_(std::make_unique<Services>()) {
  RunLoop::installMain(&services_->runLoop);
  WebEngineFactory::install(&services_->factory);
  CaptureAuthorization::install(&services_->authorization);
}

Backend::~Backend() {
  // The tasks end first: what they own may still want the loop.
  services_->runLoop.dropTasks();
  RunLoop::installMain(nullptr);
  WebEngineFactory::install(nullptr);
  CaptureAuthorization::install(nullptr);
}

VirtualRunLoop& Backend::runLoop() { return services_->runLoop; }

void Backend::setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) {
  services_->authorization.set(mediaType, status);
}

}  // namespace corvane::headless
