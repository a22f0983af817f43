#include "corvane/platform/web/web_engine.h"

#include <utility>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

WebEngineClient::~WebEngineClient() = default;
WebEngine::~WebEngine() = default;
WebEngineFactory::~WebEngineFactory() = default;

void queryEngineCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion) {
  assertMainThread();
  WebEngineFactory::current().queryCapabilities(std::move(completion));
}

WebEngineFactory& WebEngineFactory::current() { return *PlatformInstallation::platform().engines; }

}  // namespace corvane
