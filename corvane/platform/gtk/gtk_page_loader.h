/// Loads pages into a web view and reports how each load ended.
#pragma once

#include <webkit/webkit.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "corvane/platform/engine/load_tracker.h"
#include "corvane/platform/gtk/glib_source.h"
#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/gtk/gtk_evaluation.h"
#include "corvane/platform/gtk/gtk_navigation.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::gtk {

/// Feeds the engine's signals to the tracker and the tracker's reports to the client.
///
/// Times out documents of which nothing comes, which the engine itself never does. A page whose process hangs or ends
/// while the host waits for another page gives way: its process is ended, and the load begins anew in another one.
///
/// Ownership: owned by the engine, which calls `begin` once and `end` at its end; timers and posted work hold it
///            weakly. The web view must live until `end`.
/// Threads:   main thread only.
/// Failure:   through the client.
class PageLoader : public std::enable_shared_from_this<PageLoader> {
 public:
  PageLoader(WebKitWebView* webView, std::shared_ptr<EngineContext> context, std::shared_ptr<Evaluations> evaluations,
             std::weak_ptr<WebEngineClient> client);

  void begin();
  void end();
  void load(const URLRequest& request);
  [[nodiscard]] bool mayOpenWindow(WebKitNavigationAction* action) const { return navigation_.mayOpenWindow(action); }
  void somethingWasDropped() { navigation_.somethingWasDropped(); }
  /// Whether what the present document posts is for the host.
  [[nodiscard]] bool isPageHeard() const { return tracker_.isPageHeard(); }

 private:
  void connectSignals();
  [[nodiscard]] bool allows(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type);
  [[nodiscard]] bool mayNavigate(WebKitNavigationAction* action);
  void navigationDecided(const char* url);
  void loadChanged(WebKitLoadEvent event);
  void loadFailed(WebKitLoadEvent event, const char* url, const GError& error);
  void processTerminated(WebKitWebProcessTerminationReason reason);
  void timedOut();
  void watchDocument();
  /// Asks the previous page for a sign of life, while the host waits for another one.
  void watchPreviousPage();
  void askForSignOfLife();
  void beginAgain();
  /// Ends a process that keeps the host's load from beginning.
  void leavePreviousPage();
  void settleCancelledLoad();
  void refuse(const URLRequest& request);

  void restartTimer();
  /// The engine may say that a load has finished while scripts of the page are still to run, the host's own among them.
  /// Such a load is reported when they have run.
  void reportWhenComplete(engine::LoadReport report);
  /// The client may end the engine: nothing of this may be touched after a report.
  void report(std::optional<engine::LoadReport> report);

  WebKitWebView* webView_;
  std::shared_ptr<EngineContext> context_;
  std::shared_ptr<Evaluations> evaluations_;
  std::weak_ptr<WebEngineClient> client_;
  PageNavigation navigation_;
  engine::LoadTracker tracker_;
  std::optional<GlibSource> timer_;
  std::optional<GlibSource> replacementTimer_;
  std::optional<GlibSource> signOfLifeTimer_;
  std::optional<GlibSource> beginningTimer_;
  std::chrono::nanoseconds lastSignOfLife_{};
  std::chrono::nanoseconds timeoutInterval_ = URLRequest{}.timeoutInterval;
  /// Changes with whatever makes an earlier load's end meaningless.
  std::uint64_t loadNumber_ = 0;
  /// The host's newest, for another try in another process; none once it has had that.
  GObjectHandle<WebKitURIRequest> untriedAgain_;
  std::optional<SignalConnection> document_;
  std::vector<SignalConnection> connections_;
};

}  // namespace corvane::gtk
