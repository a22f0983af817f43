/// A view that shows a web page.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "corvane/export.h"
#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/web/web_engine.h"
#include "corvane/platform/web/wk_navigation_delegate.h"
#include "corvane/platform/web/wk_ui_delegate.h"
#include "corvane/platform/web/wk_web_view_configuration.h"

namespace corvane {

/// How content keeps clear of the screen's bars and notches.
enum class UIScrollViewContentInsetAdjustmentBehavior { automatic, never };

/// A view that shows a web page, carried by the engine of the installed backend.
///
/// Ownership: made by `create` and owned like every view; its delegates are held weakly.
/// Threads:   main thread only.
/// Failure:   through the navigation delegate and the evaluation completions.
class CORVANE_EXPORT WKWebView final : public UIView, private WebEngineClient {
 public:
  static std::shared_ptr<WKWebView> create(CGRect frame, WKWebViewConfiguration configuration);
  WKWebView(ConstructionKey key, CGRect frame, WKWebViewConfiguration configuration);
  ~WKWebView() override;

  void setNavigationDelegate(std::weak_ptr<WKNavigationDelegate> delegate) {
    navigationDelegate_ = std::move(delegate);
  }
  /// Without a delegate a page's request for the camera or the microphone is put to the user.
  void setUIDelegate(std::weak_ptr<WKUIDelegate> delegate) { uiDelegate_ = std::move(delegate); }

  /// Kept for backends whose screens have insets; without effect in those that are here.
  [[nodiscard]] UIScrollViewContentInsetAdjustmentBehavior contentInsetAdjustmentBehavior() const;
  void setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior behavior);
  [[nodiscard]] bool isScrollEnabled() const { return isScrollEnabled_; }
  void setScrollEnabled(bool isEnabled);
  void setUserInteractionEnabled(bool isEnabled) override;

  [[nodiscard]] const WKWebViewConfiguration& configuration() const { return configuration_; }

  void load(const URLRequest& request);
  /// Runs a script in the page's main frame. The completion comes later on the main thread, exactly once, also when
  /// the web view has ended by then. It may be empty.
  void evaluateJavaScript(std::string_view script, EvaluationCompletion completion);

  [[nodiscard]] CaptureState captureState(AVMediaType mediaType) const;
  void setCaptureMuted(AVMediaType mediaType, bool isMuted);

  /// The engine behind this view, for backends and for tests that play the page.
  [[nodiscard]] WebEngine& engine() const { return *engine_; }

 private:
  [[nodiscard]] bool engineMayNavigate(const WKNavigationAction& action) override;
  void engineDidFinishLoad() override;
  void engineDidFailLoad(LoadPhase phase, const WebError& error) override;
  void engineDidReceiveMessage(std::string_view channel, JsonValue body) override;
  void engineRequestsCapture(const WKMediaCaptureRequest& request,
                             WKPermissionDecisionHandler decisionHandler) override;
  void engineDidChangeCapture() override;
  void engineDidChangeResponsiveness(bool isResponding) override;

  WKWebViewConfiguration configuration_;
  std::unique_ptr<WebEngine> engine_;
  std::weak_ptr<WKNavigationDelegate> navigationDelegate_;
  std::weak_ptr<WKUIDelegate> uiDelegate_;
  UIScrollViewContentInsetAdjustmentBehavior contentInsetAdjustmentBehavior_ =
      UIScrollViewContentInsetAdjustmentBehavior::automatic;
  bool isScrollEnabled_ = true;
};

}  // namespace corvane
