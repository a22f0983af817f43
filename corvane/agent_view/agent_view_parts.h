/// What an agent view is made of, for the framework's own code and its tests.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "corvane/agent_view/call_state.h"
#include "corvane/agent_view/message_dispatch.h"
#include "corvane/agent_view/navigation_policy.h"
#include "corvane/agent_view/request_channel.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/minimized/floating_presentation.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane {

/// The state behind the public view: the receiver of its page's messages, the delegate of its requests and of its
/// floating presentation.
///
/// Ownership: owned by its view, which it refers back to.
class VelnorAgentView::Parts final : public PageMessageReceiver,
                                     public RequestChannelDelegate,
                                     public FloatingPresentationDelegate {
 public:
  Parts(VelnorAgentView& view, Region region, std::string organisationId, bool enableSSO);

  void minimizeRequested() override;
  void handleCallbackEvent(JsonView data) override;
  /// The only way of an event out of the framework: to the framework's own handler, then to the host app's. Either
  /// may drop the view's last holder, so a caller that does not hold the view may not touch anything of it after this.
  void emitEvent(const AgentEvent& event) override;

  [[nodiscard]] bool hasActiveCall() const override;
  [[nodiscard]] const CartQuantities& cart() const override { return callState.cart; }
  void evaluate(std::string_view script, EvaluationCompletion completion) override;
  void scriptDidFail(const WebError& error) override;

  [[nodiscard]] UIView& view() override { return view_; }
  [[nodiscard]] std::shared_ptr<VelnorAgentView> agentView() override;
  void setPageInteractionEnabled(bool isEnabled) override;
  void maximizeRequested() override { view_.maximizeView(); }

  void setEventHandler(AgentEventHandler handler) { eventHandler_ = share(std::move(handler)); }
  void setInternalEventHandler(AgentEventHandler handler) { internalEventHandler_ = share(std::move(handler)); }
  [[nodiscard]] AgentEventHandler eventHandler() const { return eventHandler_ ? *eventHandler_ : nullptr; }

  const Region region;
  const std::string organisationId;
  const bool enableSSO;
  std::optional<std::string> connectId;
  /// The page address of the last booking; none when it could not be built.
  std::optional<std::string> callUrl;
  std::shared_ptr<WKWebView> webView;
  bool isLoaded = false;
  std::optional<WebError> error;
  CallState callState;
  std::shared_ptr<RequestChannel> requests;
  std::shared_ptr<FloatingPresentation> floating;
  NavigationPolicy navigation;
  ExternalLinkHandler externalLinkHandler;
  std::function<void()> captureHandler;
  PageIncidentHandler pageIncidentHandler;
  bool reloadsLostPage = false;
  /// Whether the process of the page that was loaded last has ended.
  bool isPageLost = false;
  std::optional<std::chrono::nanoseconds> lastReload;

  /// Tells of a lost process and loads the booking again, if that is wanted.
  void pageWasLost();
  void reloadLostPage();
  void tell(PageIncident incident) const;

 private:
  /// Shared so that a handler may replace itself, and be called without copying what it captured.
  using SharedHandler = std::shared_ptr<const AgentEventHandler>;
  static SharedHandler share(AgentEventHandler handler);

  VelnorAgentView& view_;
  SharedHandler internalEventHandler_;
  SharedHandler eventHandler_;
};

/// Opens a view to the rest of the framework.
class AgentViewAccess {
 public:
  using Parts = VelnorAgentView::Parts;
  static Parts& parts(VelnorAgentView& view) { return *view.parts_; }
};

}  // namespace corvane
