#include "corvane/platform/web/wk_web_view.h"

#include <utility>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

WKNavigationDelegate::~WKNavigationDelegate() = default;
WKUIDelegate::~WKUIDelegate() = default;

void WKUIDelegate::webViewDidChangeCapture(WKWebView& /*webView*/) {}
void WKNavigationDelegate::webViewDidChangeResponsiveness(WKWebView& /*webView*/, bool /*isResponding*/) {}

bool WKNavigationDelegate::webViewMayNavigate(WKWebView& /*webView*/, const WKNavigationAction& action) {
  const bool isWeb = action.url.starts_with("https://") || action.url.starts_with("http://");
  return action.target == WKNavigationTarget::subframe || (action.target == WKNavigationTarget::mainFrame && isWeb);
}

std::shared_ptr<WKWebView> WKWebView::create(CGRect frame, WKWebViewConfiguration configuration) {
  assertMainThread();
  auto view = std::make_shared<WKWebView>(ConstructionKey{}, frame, std::move(configuration));
  const std::weak_ptr<WebEngineClient> client = std::shared_ptr<WebEngineClient>(view, view.get());
  view->engine_ = WebEngineFactory::current().makeEngine(view->configuration_, client);
  return view;
}

WKWebView::WKWebView(ConstructionKey key, CGRect frame, WKWebViewConfiguration configuration)
    : UIView(key, frame), configuration_(std::move(configuration)) {}

WKWebView::~WKWebView() = default;

UIScrollViewContentInsetAdjustmentBehavior WKWebView::contentInsetAdjustmentBehavior() const {
  return contentInsetAdjustmentBehavior_;
}

void WKWebView::setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior behavior) {
  contentInsetAdjustmentBehavior_ = behavior;
}

void WKWebView::setScrollEnabled(bool isEnabled) {
  assertMainThread();
  isScrollEnabled_ = isEnabled;
  engine_->setScrollEnabled(isEnabled);
}

void WKWebView::setUserInteractionEnabled(bool isEnabled) {
  UIView::setUserInteractionEnabled(isEnabled);
  engine_->setInteractionEnabled(isEnabled);
}

void WKWebView::load(const URLRequest& request) {
  assertMainThread();
  engine_->load(request);
}

void WKWebView::evaluateJavaScript(std::string_view script, EvaluationCompletion completion) {
  assertMainThread();
  if (!completion) completion = [](const EvaluationResult&) {};
  engine_->evaluate(script, std::move(completion));
}

CaptureState WKWebView::captureState(AVMediaType mediaType) const { return engine_->captureState(mediaType); }

void WKWebView::setCaptureMuted(AVMediaType mediaType, bool isMuted) {
  assertMainThread();
  engine_->setCaptureMuted(mediaType, isMuted);
}

void WKWebView::engineDidChangeCapture() {
  if (const auto delegate = uiDelegate_.lock()) delegate->webViewDidChangeCapture(*this);
}

void WKWebView::engineDidChangeResponsiveness(bool isResponding) {
  if (const auto delegate = navigationDelegate_.lock()) delegate->webViewDidChangeResponsiveness(*this, isResponding);
}

bool WKWebView::engineMayNavigate(const WKNavigationAction& action) {
  const auto delegate = navigationDelegate_.lock();
  return delegate == nullptr || delegate->webViewMayNavigate(*this, action);
}

void WKWebView::engineDidFinishLoad() {
  if (const auto delegate = navigationDelegate_.lock()) delegate->webViewDidFinish(*this);
}

void WKWebView::engineDidFailLoad(LoadPhase phase, const WebError& error) {
  const auto delegate = navigationDelegate_.lock();
  if (delegate == nullptr) return;
  if (phase == LoadPhase::provisional) {
    delegate->webViewDidFailProvisionalNavigation(*this, error);
  } else {
    delegate->webViewDidFail(*this, error);
  }
}

void WKWebView::engineDidReceiveMessage(std::string_view channel, JsonValue body) {
  // The handler may drop this view, and with it the controller that is delivering.
  const auto controller = configuration_.userContentController;
  controller->deliver({channel, std::move(body)});
}

void WKWebView::engineRequestsCapture(const WKMediaCaptureRequest& request,
                                      WKPermissionDecisionHandler decisionHandler) {
  if (const auto delegate = uiDelegate_.lock()) {
    delegate->webViewRequestMediaCapturePermission(*this, request, std::move(decisionHandler));
  } else {
    decisionHandler(WKPermissionDecision::prompt);
  }
}

}  // namespace corvane
