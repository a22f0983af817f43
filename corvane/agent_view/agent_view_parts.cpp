#include "corvane/agent_view/agent_view_parts.h"

#include <utility>

#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane {

VelnorAgentView::Parts::Parts(VelnorAgentView& view, Region region, std::string organisationId, bool enableSSO)
    : region(std::move(region)), organisationId(std::move(organisationId)), enableSSO(enableSSO), view_(view) {}

void VelnorAgentView::Parts::minimizeRequested() {
  floating->minimize(whileAlive(std::weak_ptr(agentView()), [](VelnorAgentView& alive) {
    AgentViewAccess::parts(alive).emitEvent(AgentEvent::DidMinimize{});
  }));
}

void VelnorAgentView::Parts::handleCallbackEvent(JsonView data) { requests->handleCallbackEvent(data); }

bool VelnorAgentView::Parts::hasActiveCall() const { return callState.callSessionStatus == CallSessionStatus::running; }

void VelnorAgentView::Parts::evaluate(std::string_view script, EvaluationCompletion completion) {
  if (webView != nullptr) webView->evaluateJavaScript(script, std::move(completion));
}

void VelnorAgentView::Parts::scriptDidFail(const WebError& scriptError) {
  error = scriptError;
  diagnose(Diagnostic::Kind::scriptFailed, [&] { return "an action was not posted: " + scriptError.description; });
  emitEvent(AgentEvent::Error{});
}

void VelnorAgentView::Parts::tell(PageIncident incident) const {
  if (const auto handler = pageIncidentHandler) handler(incident);
}

void VelnorAgentView::Parts::pageWasLost() {
  const auto alive = agentView();
  tell(PageIncident::processEnded);
  if (!reloadsLostPage) return;
  // The engine is in the middle of telling.
  RunLoop::main().post(
      whileAlive(std::weak_ptr(alive), [](VelnorAgentView& view) { AgentViewAccess::parts(view).reloadLostPage(); }));
}

void VelnorAgentView::Parts::reloadLostPage() {
  const auto now = RunLoop::main().now();
  const bool isEarly = lastReload && now - *lastReload < std::chrono::minutes(1);
  // A handler may have loaded something in the meantime, or wish for no reloading any more.
  if (!reloadsLostPage || !isPageLost || isEarly || !connectId) return;
  lastReload = now;
  agentView()->loadBooking(*connectId);
  if (!isPageLost) tell(PageIncident::reloaded);
}

std::shared_ptr<VelnorAgentView> VelnorAgentView::Parts::agentView() {
  return std::static_pointer_cast<VelnorAgentView>(view_.shared_from_this());
}

void VelnorAgentView::Parts::setPageInteractionEnabled(bool isEnabled) {
  if (webView != nullptr) webView->setUserInteractionEnabled(isEnabled);
}

void VelnorAgentView::Parts::emitEvent(const AgentEvent& event) {
  std::shared_ptr<UIView> alive;
  if (const auto handler = internalEventHandler_) {
    // It may drop the view's last holder; the host app's handler is still owed the event.
    alive = view_.shared_from_this();
    (*handler)(event);
  }
  if (const auto handler = eventHandler_) (*handler)(event);
}

VelnorAgentView::Parts::SharedHandler VelnorAgentView::Parts::share(AgentEventHandler handler) {
  return handler ? std::make_shared<const AgentEventHandler>(std::move(handler)) : nullptr;
}

}  // namespace corvane
