#include "corvane/platform/qt/qt_page_loader.h"

#include <QtWebEngineCore/QWebEngineHistory>
#include <QtWebEngineCore/QWebEngineScriptCollection>
#include <QtWebEngineCore/QWebEngineUrlScheme>
#include <QtWebEngineWidgets/QWebEngineView>
#include <algorithm>
#include <csignal>
#include <limits>
#include <utility>

#include "corvane/platform/foundation/match.h"
#include "corvane/platform/foundation/utf8.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

using engine::LoadFailed;
using engine::LoadFinished;
using engine::LoadReport;

namespace {

/// How long the page that is to be left may keep its process busy.
constexpr std::chrono::seconds signOfLifeLimit{3};
/// How long after one sign of life it is asked for the next.
constexpr std::chrono::seconds signOfLifeInterval{1};
/// How long after a click or a key the page still goes somewhere because of it.
constexpr std::chrono::seconds userActionLength{1};

/// An address in the engine's spelling, as far as addresses are compared here.
std::string spelling(const QUrl& url) {
  QUrl spelled = url.adjusted(QUrl::NormalizePathSegments);
  if (spelled.path().isEmpty() && !spelled.host().isEmpty()) spelled.setPath(QStringLiteral("/"));
  return toText(spelled.toEncoded());
}

/// Whether the engine would load anything under this address. It takes an address of no use for the empty page, and
/// calls that a success.
bool isLoadable(const std::string& text, const QUrl& url) {
  return isValidUtf8(text) && url.isValid() && !url.isRelative() && url.scheme() != QLatin1String("javascript");
}

/// Whether the engine shows what such an address leads to. It would start another program for all others.
bool isForEngine(const QUrl& url) {
  static const QStringList schemes{QStringLiteral("http"),       QStringLiteral("https"), QStringLiteral("about"),
                                   QStringLiteral("data"),       QStringLiteral("blob"),  QStringLiteral("file"),
                                   QStringLiteral("filesystem"), QStringLiteral("qrc")};
  return schemes.contains(url.scheme()) || QWebEngineUrlScheme::schemeByName(url.scheme().toLatin1()).name() != "";
}

WebError::Kind kindOf(const QWebEngineLoadingInfo& info) {
  const bool isInsecure = info.errorDomain() == QWebEngineLoadingInfo::CertificateErrorDomain;
  return isInsecure ? WebError::Kind::insecureServer : WebError::Kind::cannotLoad;
}

std::string describe(const QWebEngineLoadingInfo& info) {
  if (!info.errorString().isEmpty()) return toText(info.errorString());
  return "The page cannot be loaded (error " + std::to_string(info.errorCode()) + ")";
}

const char* describe(QWebEnginePage::RenderProcessTerminationStatus status) {
  switch (status) {
    case QWebEnginePage::CrashedTerminationStatus:
      return "The page's process has crashed";
    case QWebEnginePage::KilledTerminationStatus:
      return "The page's process has been ended";
    default:
      return "The page's process has ended";
  }
}

}  // namespace

PageLoader::PageLoader(QWebEnginePage& page, std::shared_ptr<EngineContext> context,
                       std::shared_ptr<Evaluations> evaluations, std::weak_ptr<WebEngineClient> client)
    : page_(&page), context_(std::move(context)), evaluations_(std::move(evaluations)), client_(std::move(client)) {}

void PageLoader::begin() {
  connections_ = std::make_unique<QObject>();
  const auto makeTimer = [this](void (PageLoader::*action)()) {
    auto timer = std::make_unique<QTimer>();
    timer->setSingleShot(true);
    timer->callOnTimeout(connections_.get(), [act = whileAlive(weak_from_this(), action)]() mutable { act(); });
    return timer;
  };
  timer_ = makeTimer(&PageLoader::timedOut);
  signOfLifeTimer_ = makeTimer(&PageLoader::leavePreviousPage);
  const auto on = [this](auto signal, auto handler) {
    QObject::connect(page_, signal, connections_.get(), whileAlive(weak_from_this(), std::move(handler)));
  };
  on(&QWebEnginePage::loadingChanged,
     [](PageLoader& self, const QWebEngineLoadingInfo& info) { self.loadingChanged(info); });
  on(&QWebEnginePage::loadProgress, [](PageLoader& self, int) { self.restartTimer(); });
  on(&QWebEnginePage::renderProcessTerminated,
     [](PageLoader& self, QWebEnginePage::RenderProcessTerminationStatus status, int) {
       self.processTerminated(status);
     });
  on(&QWebEnginePage::newWindowRequested,
     [](PageLoader& self, QWebEngineNewWindowRequest& request) { self.openWindow(request); });
}

void PageLoader::end() {
  connections_.reset();
  timer_.reset();
  signOfLifeTimer_.reset();
}

void PageLoader::load(const URLRequest& request) {
  ++loadNumber_;
  const QUrl url(toQString(request.url));
  if (!isLoadable(request.url, url)) return refuse(request);
  QWebEngineHttpRequest made(url);
  if (request.cachePolicy == URLRequestCachePolicy::reloadIgnoringLocalCacheData) {
    made.setHeader("Cache-Control", "no-cache");
  }
  evaluations_->setProcessGone(false);
  timeoutInterval_ = request.timeoutInterval;
  tracker_.loadRequested(spelling(url));
  restartTimer();
  untriedAgain_ = made;
  unscripted_ = made;
  // What the page that is left says meanwhile is not heard, and a load that is replaced ends without a word.
  const auto alive = shared_from_this();
  page_->load(made);
  watchPreviousPage();
}

void PageLoader::watchPreviousPage() {
  if (signOfLifeTimer_ == nullptr) return;
  signOfLifeTimer_->stop();
  if (page_->url().isEmpty()) return;
  signOfLifeTimer_->start(signOfLifeLimit);
  evaluations_->run("0",
                    whileAlive(weak_from_this(), [number = loadNumber_](PageLoader& self, const EvaluationResult&) {
                      if (self.loadNumber_ != number || self.signOfLifeTimer_ == nullptr) return;
                      self.signOfLifeTimer_->stop();
                      self.context_->runLoop->schedule(signOfLifeInterval,
                                                       whileAlive(self.weak_from_this(), [number](PageLoader& later) {
                                                         if (later.loadNumber_ == number && later.isHostWaiting())
                                                           later.watchPreviousPage();
                                                       }));
                    }));
}

void PageLoader::leavePreviousPage() {
  const auto process = static_cast<pid_t>(page_->renderProcessPid());
  if (untriedAgain_ && tracker_.isHostWaiting() && process > 0) kill(process, SIGKILL);
}

void PageLoader::refuse(const URLRequest& request) {
  tracker_.loadsCancelled();
  untriedAgain_.reset();
  unscripted_.reset();
  restartTimer();
  page_->triggerAction(QWebEnginePage::Stop);
  const LoadFailed failed{LoadPhase::provisional,
                          {WebError::Kind::cannotLoad, "This is not an address of a page", request.url}};
  context_->runLoop->post(whileAlive(weak_from_this(), [number = loadNumber_, failed](PageLoader& self) {
    if (self.loadNumber_ == number) self.report(failed);
  }));
}

bool PageLoader::mayNavigate(const QUrl& url, QWebEnginePage::NavigationType type, bool isMainFrame) {
  const auto target = isMainFrame ? WKNavigationTarget::mainFrame : WKNavigationTarget::subframe;
  if (isMainFrame && type == QWebEnginePage::NavigationTypeTyped) {
    // Only the host's loads are of this type, and the engine forgets the older ones.
    if (tracker_.isAwaited(tracker_.hostUrl())) beginHostLoad();
    return isForEngine(url);
  }
  return isAllowed({toText(url.toEncoded()), target, isUserActive()}) && isForEngine(url);
}

void PageLoader::beginHostLoad() {
  strayUrl_.clear();
  isCommitted_ = false;
  static_cast<void>(tracker_.navigationDecided(tracker_.hostUrl()));
  tracker_.loadStarted();
  restartTimer();
}

void PageLoader::loadingChanged(const QWebEngineLoadingInfo& info) {
  const std::string url = spelling(info.url());
  switch (info.status()) {
    case QWebEngineLoadingInfo::LoadStartedStatus:
      if (tracker_.isAwaited(url)) return beginHostLoad();
      if (tracker_.hostUrl() == url) return restartTimer();
      // Of what the page begins meanwhile the engine says only how it ends.
      if (tracker_.isHostWaiting()) strayUrl_ = url;
      if (tracker_.isHostWaiting()) return;
      isCommitted_ = false;
      if (tracker_.loadStarted()) timeoutInterval_ = URLRequest{}.timeoutInterval;
      return restartTimer();
    case QWebEngineLoadingInfo::LoadSucceededStatus:
      if (tracker_.isHostWaiting() && tracker_.hostUrl() == url && unscripted_) return loadWithScripts();
      return report(tracker_.loadFinished());
    case QWebEngineLoadingInfo::LoadStoppedStatus:
      return loadStopped(info);
    case QWebEngineLoadingInfo::LoadFailedStatus:
      return loadFailed(info);
  }
}

void PageLoader::loadFailed(const QWebEngineLoadingInfo& info) {
  // A server's error comes with a page like any other.
  if (info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain) return report(tracker_.loadFinished());
  // The echo of a process's end.
  if (info.errorDomain() == QWebEngineLoadingInfo::NoErrorDomain) return;
  report(tracker_.loadFailed(isCommitted_ ? LoadPhase::committed : LoadPhase::provisional,
                             {kindOf(info), describe(info), toText(info.url().toEncoded())}));
}

void PageLoader::loadStopped(const QWebEngineLoadingInfo& info) {
  if (tracker_.isHostWaiting() && spelling(info.url()) == strayUrl_) return strayUrl_.clear();
  // The page began this, and it turned out to be a download, or was refused: the page is as it was.
  if (!isCommitted_ && !tracker_.isHostWaiting()) return tracker_.pageStays();
  auto failed = tracker_.loadFailed(isCommitted_ ? LoadPhase::committed : LoadPhase::provisional,
                                    {WebError::Kind::cancelled, describe(info), toText(info.url().toEncoded())});
  // The engine says nothing of a load that another one replaces, so this one's end is certain.
  report(failed ? std::move(failed) : tracker_.settleCancelledLoad());
}

void PageLoader::documentCommitted(const std::string& url) {
  evaluations_->documentReplaced();
  isCommitted_ = true;
  // What the history has before the host's page is left for good.
  if (tracker_.isHostWaiting()) page_->history()->clear();
  report(tracker_.loadCommitted(url));
}

void PageLoader::documentArrived() {
  tracker_.documentArrived();
  restartTimer();
}

void PageLoader::processTerminated(QWebEnginePage::RenderProcessTerminationStatus status) {
  ++loadNumber_;
  const WebError gone{WebError::Kind::processTerminated, describe(status), {}};
  evaluations_->setProcessGone(true);
  evaluations_->settleAll(gone);
  if (untriedAgain_ && tracker_.isHostWaiting()) {
    // It was the previous page's process. That page has gone for the host already. The engine is still about to say how
    // the load ended with the process.
    static_cast<void>(tracker_.processTerminated({}));
    return loadSoon(*std::exchange(untriedAgain_, std::nullopt));
  }
  report(tracker_.processTerminated(gone.description));
}

void PageLoader::loadSoon(const QWebEngineHttpRequest& request) {
  tracker_.loadRequested(spelling(request.url()));
  evaluations_->setProcessGone(false);
  restartTimer();
  context_->runLoop->post(whileAlive(weak_from_this(), [number = loadNumber_, request](PageLoader& self) {
    if (self.loadNumber_ == number) self.page_->load(request);
  }));
}

void PageLoader::loadWithScripts() {
  // A process that is new because the one before has just ended may have been given none.
  QWebEngineScriptCollection& scripts = page_->scripts();
  const QList<QWebEngineScript> kept = scripts.toList();
  scripts.clear();
  scripts.insert(kept);
  loadSoon(*std::exchange(unscripted_, std::nullopt));
}

void PageLoader::openWindow(QWebEngineNewWindowRequest& request) {
  const std::string url = toText(request.requestedUrl().toEncoded());
  const bool isUsable =
      url.empty() || url == "about:blank" || url.starts_with("http://") || url.starts_with("https://");
  if (!context_->options.opensPopups || !isUsable) {
    static_cast<void>(isAllowed({url, WKNavigationTarget::newWindow, request.isUserInitiated()}));
    return;
  }
  // It ends with the page at the latest, before the profile that they share.
  auto* const popup = new QWebEngineView(qobject_cast<QWidget*>(page_->parent()));
  popup->setWindowFlag(Qt::Window);
  popup->setPage(new QWebEnginePage(context_->profile.get(), popup));
  popup->setAttribute(Qt::WA_DeleteOnClose);
  QObject::connect(popup->page(), &QWebEnginePage::windowCloseRequested, popup, &QWidget::close);
  constexpr QSize usualSize(480, 640);
  popup->resize(request.requestedGeometry().isValid() ? request.requestedGeometry().size() : usualSize);
  request.openIn(popup->page());
  popup->show();
}

bool PageLoader::isAllowed(const WKNavigationAction& action) const {
  const auto client = client_.lock();
  return client == nullptr || client->engineMayNavigate(action);
}

void PageLoader::noteUserAction() { userAction_ = context_->runLoop->now(); }

bool PageLoader::isUserActive() const { return context_->runLoop->now() - userActionLength <= userAction_; }

void PageLoader::timedOut() {
  // Noted first: what the engine says while it stops is the end of a load that is reported already.
  auto failed = tracker_.loadTimedOut();
  // A page that has begun to show stays: a call may be going on in it.
  if (tracker_.isPageHeard()) {
    restartTimer();
  } else {
    page_->triggerAction(QWebEnginePage::Stop);
  }
  report(std::move(failed));
}

void PageLoader::restartTimer() {
  // Posted work may still find this alive after its end, while one of its own calls is returning.
  if (timer_ == nullptr) return;
  if (!tracker_.isDocumentAwaited()) return timer_->stop();
  constexpr std::chrono::nanoseconds farthest = std::chrono::milliseconds(std::numeric_limits<int>::max());
  const auto interval = std::clamp(timeoutInterval_, std::chrono::nanoseconds(0), farthest);
  timer_->start(std::chrono::ceil<std::chrono::milliseconds>(interval));
}

void PageLoader::report(std::optional<LoadReport> report) {
  restartTimer();
  if (!report) return;
  const auto client = client_.lock();
  if (client == nullptr) return;
  match(
      *report, [&](const LoadFinished&) { client->engineDidFinishLoad(); },
      [&](const LoadFailed& failed) { client->engineDidFailLoad(failed.phase, failed.error); });
}

}  // namespace corvane::qt
