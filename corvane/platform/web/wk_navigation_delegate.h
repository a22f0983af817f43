/// The outcome of page loads.
#pragma once

#include "corvane/export.h"
#include "corvane/platform/web/web_error.h"

namespace corvane {

class WKWebView;

/// Told how each load ended, on the main thread. A load that a newer load of the same web view replaced is not
/// reported at all.
class CORVANE_EXPORT WKNavigationDelegate {
 public:
  virtual ~WKNavigationDelegate();
  /// The page and everything it needed at first has loaded; the server's own error pages count as pages.
  virtual void webViewDidFinish(WKWebView& webView) = 0;
  /// The load ended after the page had begun to arrive, or the page lost its process.
  virtual void webViewDidFail(WKWebView& webView, const WebError& error) = 0;
  /// The load ended before anything of the page had arrived.
  virtual void webViewDidFailProvisionalNavigation(WKWebView& webView, const WebError& error) = 0;
};

}  // namespace corvane
