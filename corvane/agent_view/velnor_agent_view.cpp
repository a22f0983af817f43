#include "corvane/agent_view/velnor_agent_view.h"

#include <chrono>
#include <utility>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/page_address.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/web_script_message_handler.h"
#include "corvane/bridge/action_records.h"
#include "corvane/bridge/event_message.h"
#include "corvane/minimized/minimized_geometry.h"
#include "corvane/minimized/minimized_store.h"
#include "corvane/platform/capture/capture_authorization.h"
#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/url_components.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane {

namespace {

WKUserScript everywhereAtDocumentEnd(std::string source) {
  return {.source = std::move(source),
          .injectionTime = WKUserScriptInjectionTime::atDocumentEnd,
          .isForMainFrameOnly = false};
}

WKWebViewConfiguration makeConfiguration(std::weak_ptr<WKScriptMessageHandler> receiver) {
  WKWebViewConfiguration configuration;
  configuration.allowsInlineMediaPlayback = true;
  WKUserContentController& content = *configuration.userContentController;
  content.addUserScript(everywhereAtDocumentEnd(messageForwarderScript()));
  content.addScriptMessageHandler(std::make_shared<WebScriptMessageHandler>(std::move(receiver)),
                                  std::string(agentEventChannel),
                                  // The page forwards the host's own actions, too, and some of them are long.
                                  {{.member = std::string(eventTypeKey), .accepts = isKnownEventType}});
  content.addUserScript(everywhereAtDocumentEnd(actionPosterScript()));
  return configuration;
}

bool mayCapture() {
  const auto isAuthorized = [](AVMediaType type) {
    return AVCaptureDevice::authorizationStatus(type) == AVAuthorizationStatus::authorized;
  };
  return isAuthorized(AVMediaType::video) && isAuthorized(AVMediaType::audio);
}

}  // namespace

std::shared_ptr<VelnorAgentView> VelnorAgentView::create(Region region, std::string organisationId, bool enableSSO) {
  assertMainThread();
  auto view =
      std::make_shared<VelnorAgentView>(ConstructionKey{}, std::move(region), std::move(organisationId), enableSSO);
  MinimizedStore::shared().setAgentView(nullptr);
  const std::shared_ptr<Parts> parts(view, view->parts_.get());
  parts->requests = RequestChannel::create(parts);
  view->buildWebView();
  parts->floating = FloatingPresentation::create(parts);
  return view;
}

VelnorAgentView::VelnorAgentView(ConstructionKey key, Region region, std::string organisationId, bool enableSSO)
    : UIView(key), parts_(std::make_unique<Parts>(*this, std::move(region), std::move(organisationId), enableSSO)) {}

VelnorAgentView::~VelnorAgentView() = default;

void VelnorAgentView::buildWebView() {
  const auto self = std::static_pointer_cast<VelnorAgentView>(shared_from_this());
  const auto webView = WKWebView::create({{}, bounds().size}, makeConfiguration(self));
  webView->setNavigationDelegate(self);
  webView->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  webView->setContentInsetAdjustmentBehavior(UIScrollViewContentInsetAdjustmentBehavior::never);
  webView->setScrollEnabled(false);
  webView->setUIDelegate(self);
  addSubview(webView);
  parts_->webView = webView;
}

void VelnorAgentView::setFrame(CGRect frame) {
  if (!isMinimized()) UIView::setFrame(frame);
}

void VelnorAgentView::setTransform(const CGAffineTransform& transform) {
  if (!isMinimized()) UIView::setTransform(transform);
}

void VelnorAgentView::superviewDidResize(CGSize from) {
  if (isMinimized()) return parts_->floating->superviewDidResize(from);
  UIView::superviewDidResize(from);
}

void VelnorAgentView::loadBooking(std::string connectId) {
  assertMainThread();
  Parts& parts = *parts_;
  if (parts.webView == nullptr) return;
  parts.connectId = std::move(connectId);
  parts.callUrl = makePageAddress({.region = parts.region,
                                   .organisationId = parts.organisationId,
                                   .connectId = *parts.connectId,
                                   .enableSSO = parts.enableSSO});
  if (!parts.callUrl) {
    return diagnose(Diagnostic::Kind::addressRefused, [] {
      return std::string("loadBooking: no address can be made of this region, organisation and booking");
    });
  }
  if (!hasScheme(*parts.callUrl)) {
    diagnose(Diagnostic::Kind::addressRefused, [&] {
      return "loadBooking: " + *parts.callUrl + " does not begin with https://, and no engine loads it";
    });
  }
  parts.error.reset();
  parts.isPageLost = false;
  parts.callState.callSessionStatus = CallSessionStatus::disconnected;
  parts.webView->load({.url = *parts.callUrl,
                       .cachePolicy = URLRequestCachePolicy::useProtocolCachePolicy,
                       .timeoutInterval = std::chrono::seconds(60)});
}

const Region& VelnorAgentView::region() const { return parts_->region; }
const std::string& VelnorAgentView::organisationId() const { return parts_->organisationId; }
bool VelnorAgentView::enableSSO() const { return parts_->enableSSO; }
const std::optional<std::string>& VelnorAgentView::connectId() const { return parts_->connectId; }
bool VelnorAgentView::isLoaded() const { return parts_->isLoaded; }
const std::optional<WebError>& VelnorAgentView::error() const { return parts_->error; }
CallSessionStatus VelnorAgentView::callSessionStatus() const { return parts_->callState.callSessionStatus; }
const std::optional<std::string>& VelnorAgentView::clientLocale() const { return parts_->callState.clientLocale; }
bool VelnorAgentView::isMinimized() const { return parts_->floating != nullptr && parts_->floating->isMinimized(); }

RequestChannel* VelnorAgentView::requestChannel() const { return parts_->requests.get(); }

void VelnorAgentView::refreshSsoToken(std::string ssoToken, std::string responseId) {
  assertMainThread();
  parts_->requests->submit(std::make_shared<SSOAction>(
      SSOActionFields{.data = {.idToken = std::move(ssoToken), .responseId = std::move(responseId)}}));
}

void VelnorAgentView::signOut() {
  assertMainThread();
  parts_->requests->submit(std::make_shared<VoidAction>(Action::ssoLogout));
}

void VelnorAgentView::maximizeView() {
  assertMainThread();
  const auto self = std::static_pointer_cast<VelnorAgentView>(weak_from_this().lock());
  if (self == nullptr || !isMinimized()) return;
  // The window has grown back before the page hears of it.
  parts_->floating->maximize(whileAlive(std::weak_ptr(self), &VelnorAgentView::tellPageOfMaximizing));
}

void VelnorAgentView::tellPageOfMaximizing() {
  const auto self = std::static_pointer_cast<VelnorAgentView>(shared_from_this());
  parts_->requests->post(VoidAction(Action::maximize),
                         whileAlive(std::weak_ptr(self), [](VelnorAgentView& view, const EvaluationResult& result) {
                           if (!result) return view.parts_->scriptDidFail(result.error());
                           view.parts_->emitEvent(AgentEvent::DidMaximize{});
                         }));
}

MinimizedOrigin VelnorAgentView::minimizedOrigin() const { return parts_->floating->settings.origin; }
void VelnorAgentView::setMinimizedOrigin(MinimizedOrigin origin) {
  assertMainThread();
  parts_->floating->settings.origin = origin;
}
std::optional<CGSize> VelnorAgentView::minimizedSize() const { return parts_->floating->settings.size; }
void VelnorAgentView::setMinimizedSize(std::optional<CGSize> size) {
  assertMainThread();
  parts_->floating->settings.size = size ? std::optional(atLeastMinimizedSize(*size)) : std::nullopt;
}
const std::shared_ptr<UIView>& VelnorAgentView::minimizedSuperview() const {
  return parts_->floating->settings.superview;
}
void VelnorAgentView::setMinimizedSuperview(std::shared_ptr<UIView> view) {
  assertMainThread();
  parts_->floating->settings.superview = std::move(view);
}
bool VelnorAgentView::tapToMaximize() const { return parts_->floating->settings.tapToMaximize; }
void VelnorAgentView::setTapToMaximize(bool isOn) {
  assertMainThread();
  parts_->floating->settings.tapToMaximize = isOn;
}
AgentEventHandler VelnorAgentView::eventHandler() const { return parts_->eventHandler(); }
void VelnorAgentView::setEventHandler(AgentEventHandler handler) {
  assertMainThread();
  parts_->setEventHandler(std::move(handler));
}

void VelnorAgentView::userContentControllerDidReceive(WKUserContentController& /*controller*/,
                                                      const WKScriptMessage& message) {
  dispatchMessage(message, parts_->callState, *parts_);
}

void VelnorAgentView::setAllowedOrigins(std::optional<std::vector<std::string>> origins) {
  assertMainThread();
  parts_->navigation.setAllowedOrigins(std::move(origins));
}

void VelnorAgentView::setExternalLinkHandler(ExternalLinkHandler handler) {
  assertMainThread();
  parts_->externalLinkHandler = std::move(handler);
}

CaptureState VelnorAgentView::captureState(AVMediaType mediaType) const {
  return parts_->webView->captureState(mediaType);
}

void VelnorAgentView::setCaptureHandler(std::function<void()> handler) {
  assertMainThread();
  parts_->captureHandler = std::move(handler);
}

void VelnorAgentView::setCaptureMuted(AVMediaType mediaType, bool isMuted) {
  assertMainThread();
  parts_->webView->setCaptureMuted(mediaType, isMuted);
}

void VelnorAgentView::setPageIncidentHandler(PageIncidentHandler handler) {
  assertMainThread();
  parts_->pageIncidentHandler = std::move(handler);
}

void VelnorAgentView::setReloadsLostPage(bool reloads) {
  assertMainThread();
  parts_->reloadsLostPage = reloads;
}

void VelnorAgentView::webViewDidChangeResponsiveness(WKWebView& /*webView*/, bool isResponding) {
  parts_->tell(isResponding ? PageIncident::respondsAgain : PageIncident::stoppedResponding);
}

void VelnorAgentView::webViewDidChangeCapture(WKWebView& /*webView*/) {
  if (const auto handler = parts_->captureHandler) handler();
}

bool VelnorAgentView::webViewMayNavigate(WKWebView& /*webView*/, const WKNavigationAction& action) {
  if (parts_->navigation.allows(action, parts_->callUrl.value_or(std::string()))) return true;
  const auto self = std::static_pointer_cast<VelnorAgentView>(shared_from_this());
  const ExternalLink link{action.url, action.target == WKNavigationTarget::newWindow, action.isUserInitiated};
  RunLoop::main().post(whileAlive(std::weak_ptr(self), [link](VelnorAgentView& view) {
    if (const auto handler = view.parts_->externalLinkHandler) handler(link);
  }));
  return false;
}

void VelnorAgentView::webViewDidFinish(WKWebView& /*webView*/) {
  if (parts_->isLoaded) return;
  parts_->isLoaded = true;
  parts_->emitEvent(AgentEvent::DidLoad{});
}

void VelnorAgentView::webViewDidFail(WKWebView& /*webView*/, const WebError& error) {
  const auto alive = shared_from_this();
  const bool isLost = error.kind == WebError::Kind::processTerminated;
  parts_->error = error;
  parts_->isPageLost = isLost;
  parts_->emitEvent(AgentEvent::Error{});
  if (isLost) parts_->pageWasLost();
}

void VelnorAgentView::webViewDidFailProvisionalNavigation(WKWebView& webView, const WebError& error) {
  webViewDidFail(webView, error);
}

void VelnorAgentView::webViewRequestMediaCapturePermission(WKWebView& /*webView*/,
                                                           const WKMediaCaptureRequest& /*request*/,
                                                           WKPermissionDecisionHandler decisionHandler) {
  if (!mayCapture()) return decisionHandler(WKPermissionDecision::prompt);
  const auto alive = shared_from_this();  // the answer may lead anywhere
  decisionHandler(WKPermissionDecision::grant);
  parts_->emitEvent(AgentEvent::PreviewStarted{});
}

}  // namespace corvane
