#include "corvane/platform/qt/qt_engine_context.h"

#include <QString>
#include <QStringList>

#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

namespace {

std::unique_ptr<QWebEngineProfile> makeProfile(const BackendOptions& options) {
  // Without a name nothing is written. With one, it all goes below the folders that the toolkit has for this app.
  auto profile = options.isEphemeral ? std::make_unique<QWebEngineProfile>()
                                     : std::make_unique<QWebEngineProfile>(QStringLiteral("corvane"));
  if (!options.isEphemeral && !options.dataFolder.empty()) {
    const QString folder = toQString(options.dataFolder);
    profile->setPersistentStoragePath(folder + QStringLiteral("/data"));
    profile->setCachePath(folder + QStringLiteral("/cache"));
  }
  if (!options.userAgentSuffix.empty()) {
    profile->setHttpUserAgent(profile->httpUserAgent() + QLatin1Char(' ') + toQString(options.userAgentSuffix));
  }
  QStringList languages;
  for (const std::string& language : options.languages) languages.append(toQString(language));
  if (!languages.isEmpty()) profile->setHttpAcceptLanguage(languages.join(QLatin1Char(',')));
  return profile;
}

}  // namespace

EngineContext::EngineContext(const BackendOptions& chosen)
    : options(chosen), runLoop(std::make_shared<QtRunLoop>()), profile(makeProfile(chosen)) {}

}  // namespace corvane::qt
