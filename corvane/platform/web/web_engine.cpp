#include "corvane/platform/web/web_engine.h"

#include <cassert>

namespace corvane {

namespace {

WebEngineFactory* installed = nullptr;

}  // namespace

WebEngineClient::~WebEngineClient() = default;
WebEngine::~WebEngine() = default;
WebEngineFactory::~WebEngineFactory() = default;

WebEngineFactory& WebEngineFactory::current() {
  assert(installed != nullptr && "install a backend before making views");
  return *installed;
}

void WebEngineFactory::install(WebEngineFactory* factory) { installed = factory; }

}  // namespace corvane
