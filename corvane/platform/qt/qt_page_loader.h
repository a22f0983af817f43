/// Loads pages into a page view and reports how each load ended.
#pragma once

#include <QTimer>
#include <QtWebEngineCore/QWebEngineHttpRequest>
#include <QtWebEngineCore/QWebEngineLoadingInfo>
#include <QtWebEngineCore/QWebEngineNewWindowRequest>
#include <QtWebEngineCore/QWebEnginePage>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "corvane/platform/engine/load_tracker.h"
#include "corvane/platform/qt/qt_engine_context.h"
#include "corvane/platform/qt/qt_evaluation.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::qt {

/// Feeds the engine's signals to the tracker and the tracker's reports to the client, and asks the client where the
/// page may go.
///
/// Times out documents of which nothing comes, which the engine itself never does. A page whose process hangs or ends
/// while the host waits for another page gives way: its process is ended, and the load begins anew in another one.
///
/// Ownership: owned by the engine, which calls `begin` once and `end` at its end; signals and posted work hold it
///            weakly. The page must live until `end`.
/// Threads:   main thread only.
/// Failure:   through the client.
class PageLoader final : public std::enable_shared_from_this<PageLoader> {
 public:
  PageLoader(QWebEnginePage& page, std::shared_ptr<EngineContext> context, std::shared_ptr<Evaluations> evaluations,
             std::weak_ptr<WebEngineClient> client);

  void begin();
  void end();
  void load(const URLRequest& request);
  /// Whether what the present document posts is for the host.
  [[nodiscard]] bool isPageHeard() const { return tracker_.isPageHeard(); }
  /// Whether the host has asked for a page of which nothing has arrived yet.
  [[nodiscard]] bool isHostWaiting() const { return tracker_.isHostWaiting(); }

  /// The engine asks before each navigation.
  [[nodiscard]] bool mayNavigate(const QUrl& url, QWebEnginePage::NavigationType type, bool isMainFrame);
  /// The page's own words about its document.
  void documentCommitted(const std::string& url);
  void documentArrived();
  /// The user has done something in the page, which may be why it goes somewhere.
  void noteUserAction();

 private:
  void loadingChanged(const QWebEngineLoadingInfo& info);
  void loadFailed(const QWebEngineLoadingInfo& info);
  void loadStopped(const QWebEngineLoadingInfo& info);
  void processTerminated(QWebEnginePage::RenderProcessTerminationStatus status);
  void openWindow(QWebEngineNewWindowRequest& request);
  void beginHostLoad();
  void timedOut();
  /// Asks the previous page for a sign of life, while the host waits for another one.
  void watchPreviousPage();
  /// Ends a process that keeps the host's load from beginning.
  void leavePreviousPage();
  void refuse(const URLRequest& request);
  /// Begins a load anew, once the engine is done with what it is telling.
  void loadSoon(const QWebEngineHttpRequest& request);
  /// The host's page has come without any script of ours.
  void loadWithScripts();
  [[nodiscard]] bool isAllowed(const WKNavigationAction& action) const;
  [[nodiscard]] bool isUserActive() const;

  void restartTimer();
  /// The client may end the engine: nothing of this may be touched after a report.
  void report(std::optional<engine::LoadReport> report);

  QWebEnginePage* page_;
  std::shared_ptr<EngineContext> context_;
  std::shared_ptr<Evaluations> evaluations_;
  std::weak_ptr<WebEngineClient> client_;
  engine::LoadTracker tracker_;
  /// The signals' context, whose end disconnects them.
  std::unique_ptr<QObject> connections_;
  std::unique_ptr<QTimer> timer_;
  std::unique_ptr<QTimer> signOfLifeTimer_;
  std::chrono::nanoseconds timeoutInterval_ = URLRequest{}.timeoutInterval;
  /// Changes with whatever makes an earlier load's end meaningless.
  std::uint64_t loadNumber_ = 0;
  bool isCommitted_ = false;
  /// What the page has begun while the host waits for another one; empty for nothing.
  std::string strayUrl_;
  RunLoop::Time userAction_ = RunLoop::Time::min();
  /// The host's newest, for another try in another process; none once it has had that.
  std::optional<QWebEngineHttpRequest> untriedAgain_;
  /// The same, for another try with its scripts.
  std::optional<QWebEngineHttpRequest> unscripted_;
};

}  // namespace corvane::qt
