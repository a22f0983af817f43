#include "corvane/platform/qt/qt_engine_context.h"

#include <QString>

namespace corvane::qt {

namespace {

std::unique_ptr<QWebEngineProfile> makeProfile(bool isEphemeral) {
  // Without a name nothing is written. With one, it all goes below the folders that the toolkit has for this app.
  if (isEphemeral) return std::make_unique<QWebEngineProfile>();
  return std::make_unique<QWebEngineProfile>(QStringLiteral("corvane"));
}

}  // namespace

EngineContext::EngineContext(const BackendOptions& chosen)
    : options(chosen), runLoop(std::make_shared<QtRunLoop>()), profile(makeProfile(chosen.isEphemeral)) {}

}  // namespace corvane::qt
