#include "corvane/platform/headless/headless_backend.h"

#include <stdexcept>
#include <utility>

#include "corvane/platform/capture/stored_authorization.h"

namespace corvane::headless {

namespace {

class Factory final : public WebEngineFactory {
 public:
  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                        std::weak_ptr<WebEngineClient> client) override {
    return std::make_unique<HeadlessWebEngine>(configuration, std::move(client));
  }
};

}  // namespace

class Backend::Services {
 public:
  VirtualRunLoop runLoop;
  Factory factory;
  StoredAuthorization authorization;
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
