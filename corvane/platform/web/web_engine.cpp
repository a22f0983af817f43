#include "corvane/platform/web/web_engine.h"

#include "corvane/platform/foundation/platform.h"

namespace corvane {

WebEngineClient::~WebEngineClient() = default;
WebEngine::~WebEngine() = default;
WebEngineFactory::~WebEngineFactory() = default;

WebEngineFactory& WebEngineFactory::current() { return *PlatformInstallation::platform().engines; }

}  // namespace corvane
