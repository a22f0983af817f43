/// What a page asks of its user.
#pragma once

#include <functional>
#include <string>

#include "corvane/export.h"

namespace corvane {

class WKWebView;

enum class WKMediaCaptureType { camera, microphone, cameraAndMicrophone };

enum class WKPermissionDecision {
  prompt,  ///< the engine asks the user
  grant,
  deny,
};

/// What a page wants to capture.
struct WKMediaCaptureRequest {
  WKMediaCaptureType type = WKMediaCaptureType::cameraAndMicrophone;
  /// The address of the top page. Not every engine can tell which frame asks.
  std::string pageUrl;
};

/// Answers a request once. Further answers do nothing; a handler that is dropped unanswered refuses.
using WKPermissionDecisionHandler = std::move_only_function<void(WKPermissionDecision)>;

/// Decides what a page may do that its user would be asked about.
class CORVANE_EXPORT WKUIDelegate {
 public:
  virtual ~WKUIDelegate();
  /// The page wants the camera, the microphone or both. The answer may be given at once or later.
  virtual void webViewRequestMediaCapturePermission(WKWebView& webView, const WKMediaCaptureRequest& request,
                                                    WKPermissionDecisionHandler decisionHandler) = 0;
  /// What the page captures has changed; the default does nothing.
  virtual void webViewDidChangeCapture(WKWebView& webView);
};

}  // namespace corvane
