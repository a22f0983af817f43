#include "corvane/platform/headless/headless_backend.h"

#include <utility>

#include "corvane/platform/capture/stored_authorization.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/run_loop.h"

namespace corvane::headless {

namespace {

class Factory final : public WebEngineFactory {
 public:
  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                        std::weak_ptr<WebEngineClient> client) override {
    return std::make_unique<HeadlessWebEngine>(configuration, std::move(client));
  }
  void queryCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion) override {
    RunLoop::main().post([completion = std::move(completion), found = capabilities]() mutable { completion(found); });
  }

  EngineCapabilities capabilities{.hasPeerConnections = true, .hasCamera = true, .hasMicrophone = true};
};

}  // namespace

class Backend::Services {
 public:
  VirtualRunLoop runLoop;
  Factory factory;
  StoredAuthorization authorization;
  PlatformInstallation installation{{.runLoop = &runLoop, .engines = &factory, .capture = &authorization}};
};

std::expected<std::unique_ptr<Backend>, std::string> Backend::install() {
  if (auto refusal = PlatformInstallation::refusal(); !refusal.empty()) return std::unexpected(std::move(refusal));
  return std::unique_ptr<Backend>(new Backend);
}

Backend::Backend() : services_(std::make_unique<Services>()) {}

Backend::~Backend() = default;

VirtualRunLoop& Backend::runLoop() { return services_->runLoop; }

void Backend::setCapabilities(const EngineCapabilities& capabilities) {
  services_->factory.capabilities = capabilities;
}

void Backend::setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) {
  services_->authorization.set(mediaType, status);
}

}  // namespace corvane::headless
