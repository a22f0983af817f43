#include "corvane/platform/qt/qt_backend.h"

#include <QApplication>
#include <QByteArray>
#include <QtNetwork/QNetworkProxy>
#include <QtQuick/QQuickWindow>
#include <QtWebEngineCore/QWebEngineCookieStore>
#include <utility>

#include "corvane/platform/capture/stored_authorization.h"
#include "corvane/platform/engine/graphics_processor.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/qt/qt_capabilities.h"
#include "corvane/platform/qt/qt_engine_context.h"
#include "corvane/platform/qt/qt_text.h"
#include "corvane/platform/qt/qt_text_measurer.h"
#include "corvane/platform/qt/qt_web_engine.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane::qt {

namespace {

/// Adds switches for the engine, which reads them when its first page is made.
void setEngineSwitches(const BackendOptions& options) {
  constexpr const char* variable = "QTWEBENGINE_CHROMIUM_FLAGS";
  QByteArray switches = qgetenv(variable);
  const QByteArray disabling("--disable-features=");
  // The engine would drop the user's input for half a second after each load.
  const QByteArray holding("PaintHolding");
  const qsizetype place = switches.indexOf(disabling);
  // It heeds the last of several switches of one name only.
  if (!switches.contains(holding)) {
    if (place >= 0) switches.insert(place + disabling.size(), holding + ",");
    if (place < 0) switches += " " + disabling + holding;
  }
  const QByteArray mocking("--use-fake-device-for-media-stream");
  if (options.usesMockCaptureDevices && !switches.contains(mocking)) switches += " " + mocking;
  qputenv(variable, switches);
}

void setProxy(const std::string& address) {
  if (address.empty()) return;
  const QUrl url(toQString(address));
  const bool isSocks = url.scheme().startsWith(QLatin1String("socks"));
  constexpr int usualPort = 8080;
  QNetworkProxy::setApplicationProxy(QNetworkProxy(isSocks ? QNetworkProxy::Socks5Proxy : QNetworkProxy::HttpProxy,
                                                   url.host(), static_cast<quint16>(url.port(usualPort)),
                                                   url.userName(), url.password()));
}

class EngineFactory final : public WebEngineFactory {
 public:
  explicit EngineFactory(std::shared_ptr<EngineContext> context) : context_(std::move(context)) {}

  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                        std::weak_ptr<WebEngineClient> client) override {
    return std::make_unique<QtWebEngine>(configuration, std::move(client), context_);
  }
  void queryCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion) override {
    findCapabilities(context_, std::move(completion));
  }

 private:
  std::shared_ptr<EngineContext> context_;
};

}  // namespace

struct Backend::Parts {
  explicit Parts(const BackendOptions& options) : context(std::make_shared<EngineContext>(options)), factory(context) {}

  std::shared_ptr<EngineContext> context;
  EngineFactory factory;
  StoredAuthorization authorization;
  QtTextMeasurer measurer;
  PlatformInstallation installation{{.runLoop = context->runLoop.get(),
                                     .engines = &factory,
                                     .capture = &authorization,
                                     .text = &measurer,
                                     .scene = UIWindowScene::create()}};
};

std::expected<std::unique_ptr<Backend>, std::string> Backend::install(const BackendOptions& options) {
  if (auto refusal = PlatformInstallation::refusal(); !refusal.empty()) return std::unexpected(std::move(refusal));
  if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
    return std::unexpected("There is no QApplication: make one before the backend");
  }
  if (!engine::hasGraphicsProcessor()) QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  setEngineSwitches(options);
  setProxy(options.proxy);
  return std::unique_ptr<Backend>(new Backend(std::make_unique<Parts>(options)));
}

Backend::Backend(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

Backend::~Backend() = default;

void Backend::setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) {
  parts_->authorization.set(mediaType, status);
}

void Backend::setCaptureDialogTexts(CaptureDialogTexts texts) {
  parts_->context->captureDialogTexts = std::move(texts);
}

void Backend::clearPageData(std::function<void()> completion) {
  QWebEngineProfile& profile = *parts_->context->profile;
  profile.cookieStore()->deleteAllCookies();
  profile.clearAllVisitedLinks();
  profile.clearHttpCache();
  // The engine does all this in its own time and tells nothing of it.
  if (completion) parts_->context->runLoop->post(std::move(completion));
}

void Backend::setCapturePrompt(CapturePrompt prompt) { parts_->context->capturePrompt = std::move(prompt); }

}  // namespace corvane::qt
