#include "corvane/platform/gtk/gtk_page_loader.h"

#include <algorithm>
#include <string>
#include <utility>

#include "corvane/platform/foundation/match.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane::gtk {

using engine::LoadFailed;
using engine::LoadFinished;
using engine::LoadReport;

namespace {

/// How long a cancelled load waits for the load that may have replaced it. The engine decides about that one within
/// two milliseconds or so. Its start then takes longer if a page of another site needs a new process.
constexpr std::chrono::milliseconds replacementDecisionLimit{100};
constexpr std::chrono::seconds replacementStartLimit{5};
/// How long the page that is to be left may keep its process busy.
constexpr std::chrono::seconds signOfLifeLimit{3};
constexpr std::chrono::milliseconds signOfLifeInterval{750};
/// By when a load has begun, or the engine has lost it. That has been seen, rarely, of one that replaced another in the
/// same moment.
constexpr std::chrono::seconds beginningLimit{5};

std::string text(const char* text) { return text != nullptr ? text : ""; }

/// Whether the engine would load anything under this address. It takes an address of no use for the empty page, and
/// calls that a success.
bool isLoadable(const std::string& url) {
  if (g_utf8_validate(url.data(), static_cast<gssize>(url.size()), nullptr) == FALSE) return false;
  const GTextHandle scheme(g_uri_parse_scheme(url.c_str()));
  return scheme != nullptr && g_ascii_strcasecmp(scheme.get(), "javascript") != 0;
}

/// The answer was a download, or that there is nothing to show, or nothing that may be shown.
bool isNoPage(const GError& error) {
  return g_error_matches(&error, WEBKIT_POLICY_ERROR, WEBKIT_POLICY_ERROR_FRAME_LOAD_INTERRUPTED_BY_POLICY_CHANGE) !=
         FALSE;
}

WebError::Kind kindOf(const GError& error) {
  const bool isCancelled = g_error_matches(&error, WEBKIT_NETWORK_ERROR, WEBKIT_NETWORK_ERROR_CANCELLED) != FALSE;
  return isCancelled || isNoPage(error) ? WebError::Kind::cancelled : WebError::Kind::cannotLoad;
}

const char* describe(WebKitWebProcessTerminationReason reason) {
  switch (reason) {
    case WEBKIT_WEB_PROCESS_CRASHED:
      return "The page's process has crashed";
    case WEBKIT_WEB_PROCESS_EXCEEDED_MEMORY_LIMIT:
      return "The page's process has used too much memory";
    case WEBKIT_WEB_PROCESS_TERMINATED_BY_API:
      return "The page's process has been ended";
  }
  return "The page's process has ended";
}

}  // namespace

PageLoader::PageLoader(WebKitWebView* webView, std::shared_ptr<EngineContext> context,
                       std::shared_ptr<Evaluations> evaluations, std::weak_ptr<WebEngineClient> client)
    : webView_(webView),
      context_(std::move(context)),
      evaluations_(std::move(evaluations)),
      client_(client),
      navigation_(webView, context_, std::move(client)) {}

void PageLoader::begin() {
  timer_.emplace(whileAlive(weak_from_this(), &PageLoader::timedOut));
  replacementTimer_.emplace(whileAlive(weak_from_this(), &PageLoader::settleCancelledLoad));
  signOfLifeTimer_.emplace(whileAlive(weak_from_this(), &PageLoader::askForSignOfLife));
  beginningTimer_.emplace(whileAlive(weak_from_this(), &PageLoader::beginAgain));
  connectSignals();
}

void PageLoader::end() {
  connections_.clear();
  document_.reset();
  timer_.reset();
  replacementTimer_.reset();
  signOfLifeTimer_.reset();
  beginningTimer_.reset();
}

void PageLoader::connectSignals() {
  const auto self = weak_from_this();
  const auto connect = [this]<class Signature>(const char* signal, auto handler) {
    connections_.push_back(SignalConnection::make<Signature>(webView_, signal, std::move(handler)));
  };
  connect.operator()<gboolean(WebKitWebView*, WebKitPolicyDecision*, WebKitPolicyDecisionType)>(
      "decide-policy",
      [self](WebKitWebView*, WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) -> gboolean {
        const auto loader = self.lock();
        if (loader == nullptr || loader->allows(decision, type)) return FALSE;
        webkit_policy_decision_ignore(decision);
        return TRUE;
      });
  connect.operator()<void(WebKitWebView*, WebKitLoadEvent)>(
      "load-changed",
      whileAlive(self, [](PageLoader& loader, WebKitWebView*, WebKitLoadEvent event) { loader.loadChanged(event); }));
  // TRUE keeps the engine from loading an error page of its own, which would look like one more load.
  connect.operator()<gboolean(WebKitWebView*, WebKitLoadEvent, const char*, const GError*)>(
      "load-failed", [self](WebKitWebView*, WebKitLoadEvent event, const char* url, const GError* error) {
        if (const auto loader = self.lock()) loader->loadFailed(event, url, *error);
        return TRUE;
      });
  connect.operator()<gboolean(WebKitWebView*, const char*, GTlsCertificate*, GTlsCertificateFlags)>(
      "load-failed-with-tls-errors",
      [self](WebKitWebView*, const char* url, GTlsCertificate*, GTlsCertificateFlags flags) {
        const auto loader = self.lock();
        if (loader == nullptr) return TRUE;
        const GTextHandle reasons(g_flags_to_string(G_TYPE_TLS_CERTIFICATE_FLAGS, flags));
        loader->report(loader->tracker_.loadFailed(
            LoadPhase::provisional, {WebError::Kind::insecureServer,
                                     "The server's certificate is not trusted: " + text(reasons.get()), text(url)}));
        return TRUE;
      });
  connect.operator()<void(WebKitWebView*, WebKitWebProcessTerminationReason)>(
      "web-process-terminated",
      whileAlive(self, [](PageLoader& loader, WebKitWebView*, WebKitWebProcessTerminationReason reason) {
        loader.processTerminated(reason);
      }));
  connect.operator()<void(WebKitWebView*, GParamSpec*)>(
      "notify::estimated-load-progress",
      whileAlive(self, [](PageLoader& loader, WebKitWebView*, GParamSpec*) { loader.restartTimer(); }));
  connect.operator()<void(WebKitWebView*, GParamSpec*)>(
      "notify::is-web-process-responsive",
      whileAlive(self, [](PageLoader& loader, WebKitWebView* webView, GParamSpec*) {
        if (webkit_web_view_get_is_web_process_responsive(webView) == FALSE) loader.leavePreviousPage();
      }));
  connect.operator()<void(WebKitWebView*, GParamSpec*)>(
      "notify::is-loading", whileAlive(self, [](PageLoader& loader, WebKitWebView* webView, GParamSpec*) {
        if (webkit_web_view_is_loading(webView) == FALSE) loader.report(loader.tracker_.engineBecameIdle());
      }));
}

void PageLoader::load(const URLRequest& request) {
  ++loadNumber_;
  if (!isLoadable(request.url)) return refuse(request);
  const auto uriRequest = GObjectHandle<WebKitURIRequest>::adopt(webkit_uri_request_new(request.url.c_str()));
  if (request.cachePolicy == URLRequestCachePolicy::reloadIgnoringLocalCacheData) {
    // Only addresses that lead to a web server have headers.
    if (SoupMessageHeaders* headers = webkit_uri_request_get_http_headers(uriRequest.get())) {
      soup_message_headers_replace(headers, "Cache-Control", "no-cache");
    }
  }
  evaluations_->setProcessGone(false);
  timeoutInterval_ = request.timeoutInterval;
  tracker_.loadRequested(text(webkit_uri_request_get_uri(uriRequest.get())));
  restartTimer();
  untriedAgain_ = uriRequest;
  beginningTimer_->setReadyTime(monotonicTime() + beginningLimit);
  webkit_web_view_load_request(webView_, uriRequest.get());
  watchPreviousPage();
}

void PageLoader::watchPreviousPage() {
  // The engine has its own opinion, which comes late on a busy machine, and only if it has asked the page for
  // something.
  if (webkit_web_view_get_is_web_process_responsive(webView_) == FALSE) return leavePreviousPage();
  if (webkit_web_view_get_main_resource(webView_) == nullptr) return;
  lastSignOfLife_ = monotonicTime();
  askForSignOfLife();
}

void PageLoader::askForSignOfLife() {
  const auto now = monotonicTime();
  if (!tracker_.isHostWaiting()) return signOfLifeTimer_->setNeverReady();
  if (now - lastSignOfLife_ > signOfLifeLimit) return leavePreviousPage();
  signOfLifeTimer_->setReadyTime(now + signOfLifeInterval);
  evaluations_->run(webView_, "0",
                    whileAlive(weak_from_this(), [number = loadNumber_](PageLoader& loader, const EvaluationResult&) {
                      if (loader.loadNumber_ == number) loader.lastSignOfLife_ = monotonicTime();
                    }));
}

void PageLoader::leavePreviousPage() {
  signOfLifeTimer_->setNeverReady();
  if (untriedAgain_ && tracker_.isHostWaiting()) webkit_web_view_terminate_web_process(webView_);
}

void PageLoader::beginAgain() {
  beginningTimer_->setNeverReady();
  if (!untriedAgain_ || !tracker_.isBeginningAwaited()) return;
  const auto request = std::exchange(untriedAgain_, {});
  tracker_.loadRequested(text(webkit_uri_request_get_uri(request.get())));
  webkit_web_view_load_request(webView_, request.get());
}

void PageLoader::refuse(const URLRequest& request) {
  tracker_.loadsCancelled();
  untriedAgain_ = {};
  restartTimer();
  webkit_web_view_stop_loading(webView_);
  const LoadFailed failed{LoadPhase::provisional,
                          {WebError::Kind::cannotLoad, "This is not an address of a page", request.url}};
  context_->runLoop->post(whileAlive(weak_from_this(), [number = loadNumber_, failed](PageLoader& loader) {
    if (loader.loadNumber_ == number) loader.report(failed);
  }));
}

bool PageLoader::mayNavigate(WebKitNavigationAction* action) {
  const std::string url = text(webkit_uri_request_get_uri(webkit_navigation_action_get_request(action)));
  const bool isRedirect = webkit_navigation_action_is_redirect(action) != FALSE;
  if ((isRedirect || !tracker_.isAwaited(url)) && !navigation_.mayBegin(action)) return false;
  if (!isRedirect) navigationDecided(url.c_str());
  return true;
}

bool PageLoader::allows(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
    return navigation_.mayShow(objectCast<WebKitResponsePolicyDecision>(decision), tracker_.hostUrl());
  }
  WebKitNavigationAction* const action =
      webkit_navigation_policy_decision_get_navigation_action(objectCast<WebKitNavigationPolicyDecision>(decision));
  return type == WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION ? navigation_.mayOpenWindow(action)
                                                               : mayNavigate(action);
}

void PageLoader::navigationDecided(const char* url) {
  if (tracker_.navigationDecided(text(url))) replacementTimer_->setReadyTime(monotonicTime() + replacementStartLimit);
}

void PageLoader::loadChanged(WebKitLoadEvent event) {
  switch (event) {
    case WEBKIT_LOAD_STARTED:
      if (tracker_.loadStarted()) timeoutInterval_ = URLRequest{}.timeoutInterval;
      return restartTimer();
    case WEBKIT_LOAD_REDIRECTED:
      return restartTimer();
    case WEBKIT_LOAD_COMMITTED:
      watchDocument();
      if (tracker_.isHostWaiting()) navigation_.hostPageCommitted();
      return report(tracker_.loadCommitted(text(webkit_web_view_get_uri(webView_))));
    case WEBKIT_LOAD_FINISHED:
      if (auto finished = tracker_.loadFinished()) reportWhenComplete(*std::move(finished));
      return restartTimer();
  }
}

void PageLoader::loadFailed(WebKitLoadEvent event, const char* url, const GError& error) {
  // A film or a sound by itself is shown by the engine's player; the page around it goes on loading.
  if (g_error_matches(&error, WEBKIT_MEDIA_ERROR, WEBKIT_MEDIA_ERROR_WILL_HANDLE_LOAD) != FALSE) return;
  // The page began this, and it turned out to be a download, or was refused: the page is as it was.
  if (isNoPage(error) && !tracker_.isHostWaiting()) return tracker_.pageStays();
  const LoadPhase phase = event == WEBKIT_LOAD_STARTED ? LoadPhase::provisional : LoadPhase::committed;
  auto failed = tracker_.loadFailed(phase, {kindOf(error), text(error.message), text(url)});
  if (tracker_.hasCancelledLoad()) replacementTimer_->setReadyTime(monotonicTime() + replacementDecisionLimit);
  report(std::move(failed));
}

void PageLoader::watchDocument() {
  document_.reset();
  WebKitWebResource* const document = webkit_web_view_get_main_resource(webView_);
  if (document == nullptr) return;
  document_.emplace(SignalConnection::make<void(WebKitWebResource*)>(
      document, "finished", whileAlive(weak_from_this(), [](PageLoader& loader, WebKitWebResource*) {
        loader.tracker_.documentArrived();
        loader.restartTimer();
      })));
}

void PageLoader::processTerminated(WebKitWebProcessTerminationReason reason) {
  ++loadNumber_;
  evaluations_->setProcessGone(true);
  if (untriedAgain_ && tracker_.isHostWaiting()) {
    // It was the previous page's process. That page has gone for the host already.
    const auto request = std::exchange(untriedAgain_, {});
    static_cast<void>(tracker_.processTerminated({}));
    tracker_.loadRequested(text(webkit_uri_request_get_uri(request.get())));
    evaluations_->setProcessGone(false);
    restartTimer();
    return webkit_web_view_load_request(webView_, request.get());
  }
  report(tracker_.processTerminated(describe(reason)));
}

void PageLoader::timedOut() {
  // Noted first: what the engine says while it stops is the end of a load that is reported already.
  auto failed = tracker_.loadTimedOut();
  // A page that has begun to show stays: a call may be going on in it.
  if (tracker_.isPageHeard()) {
    restartTimer();
  } else {
    webkit_web_view_stop_loading(webView_);
  }
  report(std::move(failed));
}

void PageLoader::settleCancelledLoad() {
  replacementTimer_->setNeverReady();
  report(tracker_.settleCancelledLoad());
}

void PageLoader::restartTimer() {
  // Posted work may still find this alive after its end, while one of its own calls is returning.
  if (!timer_) return;
  if (tracker_.isDocumentAwaited()) {
    const auto now = monotonicTime();
    const auto limit = std::chrono::nanoseconds::max() - now;
    timer_->setReadyTime(now + std::clamp(timeoutInterval_, std::chrono::nanoseconds(0), limit));
  } else {
    timer_->setNeverReady();
  }
}

void PageLoader::reportWhenComplete(LoadReport report) {
  evaluations_->awaitDocument(webView_, whileAlive(weak_from_this(), [number = loadNumber_, report = std::move(report)](
                                                                         PageLoader& loader, const EvaluationResult&) {
                                if (loader.loadNumber_ == number) loader.report(report);
                              }));
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

}  // namespace corvane::gtk
