#include "corvane/platform/qt/qt_web_engine.h"

#include <utility>

#include "corvane/platform/engine/responsiveness.h"
#include "corvane/platform/foundation/match.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/qt/qt_capture.h"
#include "corvane/platform/qt/qt_engine_context.h"
#include "corvane/platform/qt/qt_evaluation.h"
#include "corvane/platform/qt/qt_page.h"
#include "corvane/platform/qt/qt_page_capture.h"
#include "corvane/platform/qt/qt_page_loader.h"
#include "corvane/platform/qt/qt_page_scripts.h"
#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_surface_host.h"

namespace corvane::qt {

namespace {

/// What the page says to the host, by way of the console.
struct PageListener {
  PageScripts scripts;
  std::shared_ptr<PageLoader> loader;
  std::shared_ptr<PageCapture> capture;
  std::shared_ptr<engine::Responsiveness> responsiveness;
  std::weak_ptr<WebEngineClient> client;

  void hear(const QString& line) const {
    auto word = scripts.read(line);
    if (!word) return;
    match(
        *word,
        [&](const DocumentCommitted& committed) {
          capture->clear();
          responsiveness->forget();
          loader->documentCommitted(committed.url);
        },
        [&](const DocumentArrived&) { loader->documentArrived(); },
        [&](const CaptureChanged& changed) { capture->frameChanged(changed.change); },
        [&](ChannelMessage& message) {
          const auto receiver = client.lock();
          if (receiver == nullptr || !loader->isPageHeard()) return;
          receiver->engineDidReceiveMessage(message.channel, std::move(message.body));
        });
  }
};

/// What is left of an engine that has ended. The view goes first, as it needs the rest.
struct Remains {
  std::shared_ptr<EngineContext> context;
  std::unique_ptr<PageView> view;
};

}  // namespace

struct QtWebEngine::Parts {
  std::shared_ptr<EngineContext> context;
  std::unique_ptr<PageView> view;
  Page* page = nullptr;
  std::shared_ptr<Evaluations> evaluations;
  std::shared_ptr<PageLoader> loader;
  std::shared_ptr<PageCapture> capture;
  std::shared_ptr<engine::Responsiveness> responsiveness;
  /// Shared with the questions of the page.
  std::shared_ptr<std::shared_ptr<SurfaceHost>> surface = std::make_shared<std::shared_ptr<SurfaceHost>>();
};

QtWebEngine::QtWebEngine(const WKWebViewConfiguration& configuration, std::weak_ptr<WebEngineClient> client,
                         std::shared_ptr<EngineContext> context)
    : parts_(std::make_unique<Parts>()) {
  Parts& parts = *parts_;
  parts.context = std::move(context);
  parts.view = std::make_unique<PageView>();
  parts.page = new Page(*parts.context, parts.view.get());
  parts.view->setPage(parts.page);
  parts.evaluations = std::make_shared<Evaluations>(*parts.page, parts.context);
  parts.loader = std::make_shared<PageLoader>(*parts.page, parts.context, parts.evaluations, client);
  parts.loader->begin();

  parts.capture = std::make_shared<PageCapture>(*parts.page, client);
  parts.responsiveness = std::make_shared<engine::Responsiveness>(
      parts.context->runLoop,
      whileAlive(std::weak_ptr(parts.evaluations),
                 [](Evaluations& evaluations, std::function<void()> answered) {
                   evaluations.run("0", [answered = std::move(answered)](const EvaluationResult&) { answered(); });
                 }),
      client);
  auto listener = std::make_shared<const PageListener>(
      PageScripts(configuration.userContentController, parts.context->options.longestMessage), parts.loader,
      parts.capture, parts.responsiveness, client);
  listener->scripts.install(parts.page->scripts(), parts.capture->script(listener->scripts.captureIntroduction()),
                            parts.evaluations->runnerScript());
  const std::weak_ptr<PageLoader> loader = parts.loader;
  parts.page->setHandlers({
      .said = [listener = std::move(listener)](const QString& line) { listener->hear(line); },
      .mayNavigate =
          [loader](const QUrl& url, QWebEnginePage::NavigationType type, bool isMainFrame) {
            const auto alive = loader.lock();
            return alive != nullptr && alive->mayNavigate(url, type, isMainFrame);
          },
      .isBeingLeft =
          [loader] {
            const auto alive = loader.lock();
            return alive != nullptr && alive->isHostWaiting();
          },
  });
  QObject::connect(
      parts.page, &QWebEnginePage::renderProcessTerminated, parts.page,
      [weakCapture = std::weak_ptr(parts.capture), weakResponsiveness = std::weak_ptr(parts.responsiveness)] {
        if (const auto capture = weakCapture.lock()) capture->clear();
        if (const auto responsiveness = weakResponsiveness.lock()) responsiveness->forget();
      });
  handleFeatureRequests(
      *parts.page,
      [surface = parts.surface]() -> QWindow* { return *surface != nullptr ? (*surface)->nativeWindow() : nullptr; },
      parts.context, std::move(client));
}

QtWebEngine::~QtWebEngine() {
  Parts& parts = *parts_;
  setSurface(nullptr, nullptr);
  parts.loader->end();
  parts.page->setHandlers({});
  parts.evaluations->settleAll({WebError::Kind::processTerminated, "The web view has ended", {}});
  parts.view->hide();
  // The page may be in the middle of telling us something, and does not survive its own end.
  const auto runLoop = parts.context->runLoop;
  runLoop->post([remains = Remains{std::move(parts.context), std::move(parts.view)}] {});
}

void QtWebEngine::load(const URLRequest& request) { parts_->loader->load(request); }

void QtWebEngine::evaluate(std::string_view script, EvaluationCompletion completion) {
  parts_->evaluations->run(script, std::move(completion));
  parts_->responsiveness->expectAnswer();
}

void QtWebEngine::setScrollEnabled(bool isEnabled) { setPageFixed(*parts_->page, !isEnabled); }

CaptureState QtWebEngine::captureState(AVMediaType mediaType) const { return parts_->capture->state(mediaType); }

void QtWebEngine::setCaptureMuted(AVMediaType mediaType, bool isMuted) {
  parts_->capture->setMuted(mediaType, isMuted);
}

PageView& QtWebEngine::view() const { return *parts_->view; }

void QtWebEngine::setSurface(std::shared_ptr<SurfaceHost> surface, std::function<void()> changed) {
  if (surface == nullptr) parts_->view->setEndOfTabs(nullptr);
  *parts_->surface = std::move(surface);
  parts_->view->setPictureHandler(std::move(changed));
}

const std::shared_ptr<SurfaceHost>& QtWebEngine::surface() const { return *parts_->surface; }

void QtWebEngine::noteUserAction() {
  parts_->loader->noteUserAction();
  parts_->responsiveness->expectAnswer();
}

}  // namespace corvane::qt
