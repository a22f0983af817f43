#include "corvane/declarative/velnor_agent.h"

#include <functional>
#include <source_location>
#include <utility>

#include "corvane/declarative/agent_context_access.h"
#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/declarative/appearance.h"
#include "corvane/platform/declarative/ui_view_representable.h"
#include "corvane/platform/foundation/platform.h"

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
    view->setMinimizedOrigin(config.minimized.origin);
    view->setMinimizedSize(config.minimized.size);
    view->setMinimizedSuperview(config.minimized.superview);
    view->setTapToMaximize(config.minimized.tapToMaximize);
    view->setEventHandler(config.eventHandler);
    if (!view->isLoaded()) view->loadBooking(connectId);
    return view;
  }
};

namespace {

/// The view's value where the context has a view, else the agent's own.
template <class Value>
Value read(auto property, const Value& own, std::source_location door = std::source_location::current()) {
  assertMainThread(door);
  const auto view = VelnorAgentContext::shared().agentView();
  return view == nullptr ? own : std::invoke(property, *view);
}

/// Writes the agent's own value, and the view's where the context has a view.
template <class Value>
void write(auto property, Value& own, Value value, std::source_location door = std::source_location::current()) {
  assertMainThread(door);
  own = value;
  if (const auto view = VelnorAgentContext::shared().agentView()) std::invoke(property, *view, std::move(value));
}

void releaseUnlessMinimized() {
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
  assertMainThread();
  AgentContextAccess::setAgent(context(), *this);
}

VelnorAgent::VelnorAgent(const std::shared_ptr<VelnorAgentView>& agentView)
    : region_(agentView->region()),
      organisationId_(agentView->organisationId()),
      connectId_(agentView->connectId().value_or("")),
      enableSSO_(agentView->enableSSO()) {
  assertMainThread();
  AgentContextAccess::setAgentView(context(), agentView);
  AgentContextAccess::setAgent(context(), *this);
}

VelnorAgentContext& VelnorAgent::context() { return VelnorAgentContext::shared(); }

bool VelnorAgent::tapToMaximize() const {
  return read(&VelnorAgentView::tapToMaximize, config_.minimized.tapToMaximize);
}
void VelnorAgent::setTapToMaximize(bool isOn) {
  write(&VelnorAgentView::setTapToMaximize, config_.minimized.tapToMaximize, isOn);
}

MinimizedOrigin VelnorAgent::minimizedOrigin() const {
  return read(&VelnorAgentView::minimizedOrigin, config_.minimized.origin);
}
void VelnorAgent::setMinimizedOrigin(MinimizedOrigin origin) {
  write(&VelnorAgentView::setMinimizedOrigin, config_.minimized.origin, origin);
}

std::optional<CGSize> VelnorAgent::minimizedSize() const {
  return read(&VelnorAgentView::minimizedSize, config_.minimized.size);
}
void VelnorAgent::setMinimizedSize(std::optional<CGSize> size) {
  // The view raises what is too small; this value keeps what was asked for.
  write(&VelnorAgentView::setMinimizedSize, config_.minimized.size, size);
}

std::shared_ptr<UIView> VelnorAgent::minimizedSuperview() const {
  return read(&VelnorAgentView::minimizedSuperview, config_.minimized.superview);
}
void VelnorAgent::setMinimizedSuperview(std::shared_ptr<UIView> superview) {
  write(&VelnorAgentView::setMinimizedSuperview, config_.minimized.superview, std::move(superview));
}

AgentEventHandler VelnorAgent::eventHandler() const {
  return read(&VelnorAgentView::eventHandler, config_.eventHandler);
}
void VelnorAgent::setEventHandler(AgentEventHandler handler) {
  write(&VelnorAgentView::setEventHandler, config_.eventHandler, std::move(handler));
}

AnyView VelnorAgent::body() const {
  return Wrapper{.region = region_,
                 .organisationId = organisationId_,
                 .connectId = connectId_,
                 .enableSSO = enableSSO_,
                 .config = config_} |
         onDisappear(&releaseUnlessMinimized);
}

}  // namespace corvane
