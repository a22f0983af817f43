#include "corvane/platform/qt/qt_backend.h"

#include <QApplication>
#include <QByteArray>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "corvane/platform/capture/stored_authorization.h"
#include "corvane/platform/engine/graphics_processor.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/qt/qt_engine_context.h"
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

class EngineFactory final : public WebEngineFactory {
 public:
  explicit EngineFactory(std::shared_ptr<EngineContext> context) : context_(std::move(context)) {}

  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                        std::weak_ptr<WebEngineClient> client) override {
    return std::make_unique<QtWebEngine>(configuration, std::move(client), context_);
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
  PlatformInstallation installation{{.runLoop = context->runLoop.get(),
                                     .engines = &factory,
                                     .capture = &authorization,
                                     .scene = UIWindowScene::create()}};
};

std::expected<std::unique_ptr<Backend>, std::string> Backend::install(BackendOptions options) {
  if (auto refusal = PlatformInstallation::refusal(); !refusal.empty()) return std::unexpected(std::move(refusal));
  if (qobject_cast<QApplication*>(QCoreApplication::instance()) == nullptr) {
    return std::unexpected("There is no QApplication: make one before the backend");
  }
  if (!engine::hasGraphicsProcessor()) QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
  setEngineSwitches(options);
  return std::unique_ptr<Backend>(new Backend(std::make_unique<Parts>(options)));
}

Backend::Backend(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

Backend::~Backend() = default;

void Backend::setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) {
  parts_->authorization.set(mediaType, status);
}

void Backend::setCapturePrompt(CapturePrompt prompt) { parts_->context->capturePrompt = std::move(prompt); }

}  // namespace corvane::qt
