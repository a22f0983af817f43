/// Where pages may go, and the outcome of their loads.
#pragma once

#include "corvane/export.h"
#include "corvane/platform/web/web_error.h"
#include "corvane/platform/web/wk_navigation_action.h"

namespace corvane {

class WKWebView;

/// Told how each load ended, on the main thread. A load that a newer load of the same web view replaced is not
/// reported at all.
class CORVANE_EXPORT WKNavigationDelegate {
 public:
  virtual ~WKNavigationDelegate();
  /// The page wants to go somewhere by itself. True lets it; otherwise it stays as it is. The default lets it go to web
  /// servers, in its own place.
  [[nodiscard]] virtual bool webViewMayNavigate(WKWebView& webView, const WKNavigationAction& action);
  /// The page's process has stopped answering, or answers again; the default does nothing.
  virtual void webViewDidChangeResponsiveness(WKWebView& webView, bool isResponding);
  /// The page and everything it needed at first has loaded; the server's own error pages count as pages.
  virtual void webViewDidFinish(WKWebView& webView) = 0;
  /// The load ended after the page had begun to arrive, or the page lost its process.
  virtual void webViewDidFail(WKWebView& webView, const WebError& error) = 0;
  /// The load ended before anything of the page had arrived.
  virtual void webViewDidFailProvisionalNavigation(WKWebView& webView, const WebError& error) = 0;
};

}  // namespace corvane
