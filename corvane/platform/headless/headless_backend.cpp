#include "corvane/platform/headless/headless_backend.h"

#include <algorithm>
#include <list>
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
    // The web view does not have its engine yet, so the pointer is good for later use only.
    auto engine = std::make_unique<HeadlessWebEngine>(configuration, std::move(client));
    if (const auto shared = engine->shared()) {
      const auto taker = std::ranges::find_if(takers, [&](const auto& asked) { return asked(shared); });
      if (taker != takers.end()) takers.erase(taker);
    }
    return engine;
  }
  void queryCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion) override {
    RunLoop::main().post([completion = std::move(completion), found = capabilities]() mutable { completion(found); });
  }

  std::list<Backend::EngineTaker> takers;
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

void Backend::addEngineTaker(EngineTaker taker) {
  assertMainThread();
  if (taker) services_->factory.takers.push_back(std::move(taker));
}

VirtualRunLoop& Backend::runLoop() { return services_->runLoop; }

void Backend::setCapabilities(const EngineCapabilities& capabilities) {
  services_->factory.capabilities = capabilities;
}

void Backend::setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) {
  services_->authorization.set(mediaType, status);
}

}  // namespace corvane::headless
