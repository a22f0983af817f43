/// Where a page goes by itself.
#pragma once

#include <webkit/webkit.h>

#include <chrono>
#include <memory>
#include <string>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::gtk {

/// Asks the client about what the page wants to load, and keeps it from pages that the host has left.
///
/// The engine does not say which frame a navigation is for, only which one an answer of a server is for. So what leads
/// to web servers may begin, and is decided about when the server has answered.
///
/// Ownership: owned by the page loader. The web view must live as long.
/// Threads:   main thread only.
/// Failure:   none.
class PageNavigation {
 public:
  PageNavigation(WebKitWebView* webView, std::shared_ptr<EngineContext> context, std::weak_ptr<WebEngineClient> client)
      : webView_(webView), context_(std::move(context)), client_(std::move(client)) {}

  /// A navigation of the page's own, or the redirection of one.
  [[nodiscard]] bool mayBegin(WebKitNavigationAction* action);
  [[nodiscard]] bool mayOpenWindow(WebKitNavigationAction* action) const;
  /// The answer of a server. `hostUrl` is what the host is waiting for, or empty.
  [[nodiscard]] bool mayShow(WebKitResponsePolicyDecision* answer, const std::string& hostUrl) const;
  /// Something was dropped on the page. What the page makes of it is its own business; that it would be shown in the
  /// page's place is the engine's habit, and not wanted.
  void somethingWasDropped();
  /// The page that the host wanted is there: what the history has before it is left for good.
  void hostPageCommitted();

 private:
  /// Whether going back or forth would lead to a page of another booking.
  [[nodiscard]] bool leadsToFormerPage(WebKitNavigationAction* action, const std::string& url) const;
  [[nodiscard]] bool comesOfDropping(WebKitNavigationAction* action) const;
  [[nodiscard]] bool isAllowed(const WKNavigationAction& action) const;

  WebKitWebView* webView_;
  std::shared_ptr<EngineContext> context_;
  std::weak_ptr<WebEngineClient> client_;
  /// Where the host's page has come to be, redirections included.
  std::string hostPage_;
  std::chrono::nanoseconds droppedAt_ = std::chrono::nanoseconds::min();
  /// Of the navigation that began last.
  bool isUserInitiated_ = false;
};

}  // namespace corvane::gtk
