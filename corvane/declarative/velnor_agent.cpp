#include "corvane/declarative/velnor_agent.h"

#include <utility>

#include "corvane/declarative/agent_context_access.h"
#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/declarative/appearance.h"
#include "corvane/platform/declarative/ui_view_representable.h"

namespace corvane {

/// Brings the agent view of an agent into the view values around it.
struct VelnorAgent::Wrapper {
  using UIViewType = VelnorAgentView;

  Region region;
  std::string organisationId;
  std::string connectId;
  bool enableSSO;
  Config config;

  [[nodiscard]] std::shared_ptr<VelnorAgentView> makeUIView() const {
    std::shared_ptr<VelnorAgentView> view = context().agentView();
    if (view != nullptr && view->region() == region && view->organisationId() == organisationId) {
      // It keeps the settings that it has.
      if (!view->isLoaded() || view->connectId() != connectId) view->loadBooking(connectId);
    } else {
      view = makeAgentView();
    }
    AgentContextAccess::setAgentView(context(), view);
    return view;
  }
  void updateUIView(VelnorAgentView& /*view*/) const {}

 private:
  [[nodiscard]] std::shared_ptr<VelnorAgentView> makeAgentView() const {
    auto view = VelnorAgentView::create(region, organisationId, enableSSO);
    view->setMinimizedOrigin(config.minimizedOrigin);
    view->setMinimizedSize(config.minimizedSize);
    view->setMinimizedSuperview(config.minimizedSuperview);
    view->setTapToMaximize(config.tapToMaximize);
    view->setEventHandler(config.eventHandler);
    if (!view->isLoaded()) view->loadBooking(connectId);
    return view;
  }
};

namespace {

void letGoUnlessMinimized() {
  VelnorAgentContext& context = VelnorAgentContext::shared();
  if (context.agentView() == nullptr || context.agentView()->isMinimized()) return;
  AgentContextAccess::setAgentView(context, nullptr);
  AgentContextAccess::setAgent(context, std::nullopt);
}

}  // namespace

VelnorAgent::VelnorAgent(Region region, std::string organisationId, std::string connectId, bool enableSSO)
    : region_(std::move(region)),
      organisationId_(std::move(organisationId)),
      connectId_(std::move(connectId)),
      enableSSO_(enableSSO) {
  AgentContextAccess::setAgent(context(), *this);
}

VelnorAgent::VelnorAgent(const std::shared_ptr<VelnorAgentView>& agentView)
    : region_(agentView->region()),
      organisationId_(agentView->organisationId()),
      connectId_(agentView->connectId().value_or("")),
      enableSSO_(agentView->enableSSO()) {
  AgentContextAccess::setAgentView(context(), agentView);
  AgentContextAccess::setAgent(context(), *this);
}

VelnorAgentContext& VelnorAgent::context() { return VelnorAgentContext::shared(); }

bool VelnorAgent::tapToMaximize() const {
  const auto view = context().agentView();
  return view ? view->tapToMaximize() : config_.tapToMaximize;
}
void VelnorAgent::setTapToMaximize(bool isOn) {
  config_.tapToMaximize = isOn;
  if (const auto view = context().agentView()) view->setTapToMaximize(isOn);
}

MinimizedOrigin VelnorAgent::minimizedOrigin() const {
  const auto view = context().agentView();
  return view ? view->minimizedOrigin() : config_.minimizedOrigin;
}
void VelnorAgent::setMinimizedOrigin(MinimizedOrigin origin) {
  config_.minimizedOrigin = origin;
  if (const auto view = context().agentView()) view->setMinimizedOrigin(origin);
}

std::optional<CGSize> VelnorAgent::minimizedSize() const {
  const auto view = context().agentView();
  return view ? view->minimizedSize() : config_.minimizedSize;
}
void VelnorAgent::setMinimizedSize(std::optional<CGSize> size) {
  config_.minimizedSize = size;
  // The view raises what is too small; this value keeps what was asked for.
  if (const auto view = context().agentView()) view->setMinimizedSize(size);
}

std::shared_ptr<UIView> VelnorAgent::minimizedSuperview() const {
  const auto view = context().agentView();
  return view ? view->minimizedSuperview() : config_.minimizedSuperview;
}
void VelnorAgent::setMinimizedSuperview(std::shared_ptr<UIView> superview) {
  config_.minimizedSuperview = superview;
  if (const auto view = context().agentView()) view->setMinimizedSuperview(std::move(superview));
}

AgentEventHandler VelnorAgent::eventHandler() const {
  const auto view = context().agentView();
  return view ? view->eventHandler() : config_.eventHandler;
}
void VelnorAgent::setEventHandler(AgentEventHandler handler) {
  config_.eventHandler = handler;
  if (const auto view = context().agentView()) view->setEventHandler(std::move(handler));
}

AnyView VelnorAgent::body() const {
  return Wrapper{.region = region_,
                 .organisationId = organisationId_,
                 .connectId = connectId_,
                 .enableSSO = enableSSO_,
                 .config = config_} |
         onDisappear(&letGoUnlessMinimized);
}

}  // namespace corvane
