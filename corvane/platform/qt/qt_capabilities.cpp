#include "corvane/platform/qt/qt_capabilities.h"

#include <QString>
#include <QUrl>
#include <QtWebEngineCore/QWebEnginePage>
#include <utility>

#include "corvane/platform/engine/graphics_processor.h"
#include "corvane/platform/foundation/platform.h"

namespace corvane::qt {

namespace {

// Only a page that counts as secure may look for devices. It tells what it has found by its title.
constexpr const char* page = R"(<!doctype html><title>?</title><script>
  (async () => {
    const devices = navigator.mediaDevices ? await navigator.mediaDevices.enumerateDevices() : [];
    const has = (kind) => devices.some((device) => device.kind === kind) ? "1" : "0";
    document.title = (typeof RTCPeerConnection === "function" ? "1" : "0") + has("videoinput") + has("audioinput");
  })().catch(() => { document.title = "000"; });
</script>)";
constexpr const char* pageUrl = "https://capabilities.invalid/";
constexpr qsizetype answerLength = 3;

}  // namespace

void findCapabilities(const std::shared_ptr<EngineContext>& context,
                      std::move_only_function<void(const EngineCapabilities&)> completion) {
  // A child of the profile ends with it at the latest.
  auto* const asked = new QWebEnginePage(context->profile.get(), context->profile.get());
  auto once = std::make_shared<std::move_only_function<void(const EngineCapabilities&)>>(std::move(completion));
  const auto finish = [asked, once](const QString& answer) {
    auto taken = std::exchange(*once, nullptr);
    asked->deleteLater();
    // The backend may have ended meanwhile.
    if (!taken || PlatformInstallation::findPlatform() == nullptr) return;
    const auto has = [&](qsizetype index) {
      return answer.size() == answerLength && answer[index] == QLatin1Char('1');
    };
    taken({.hasPeerConnections = has(0),
           .hasCamera = has(1),
           .hasMicrophone = has(2),
           .hasHardwareDrawing = engine::hasGraphicsProcessor()});
  };
  QObject::connect(asked, &QWebEnginePage::titleChanged, asked, [finish](const QString& title) {
    if (title.size() == answerLength && (title[0] == QLatin1Char('0') || title[0] == QLatin1Char('1'))) finish(title);
  });
  QObject::connect(asked, &QWebEnginePage::renderProcessTerminated, asked, [finish] { finish({}); });
  asked->setHtml(QString::fromLatin1(page), QUrl(QString::fromLatin1(pageUrl)));
}

}  // namespace corvane::qt
