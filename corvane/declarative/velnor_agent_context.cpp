#include "corvane/declarative/velnor_agent_context.h"

#include <utility>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane {

VelnorAgentContext& VelnorAgentContext::shared() {
  // Never released: handlers may still be called while the process ends.
  static const auto* const context = new auto(std::make_shared<VelnorAgentContext>(ConstructionKey{}));
  return **context;
}

void VelnorAgentContext::maximizeAgent() {
  assertMainThread();
  if (const auto view = agentView_) view->maximizeView();
}

RequestChannel* VelnorAgentContext::requestChannel() const {
  return agentView_ == nullptr ? nullptr : AgentViewAccess::parts(*agentView_).requests.get();
}

void VelnorAgentContext::setAgentView(std::shared_ptr<VelnorAgentView> view) {
  // The previous view may end here; by then the context already says what it has now.
  const auto previous = std::exchange(agentView_, std::move(view));
  if (agentView_ == nullptr) return;
  AgentViewAccess::parts(*agentView_)
      .setInternalEventHandler(whileAlive(weak_from_this(), &VelnorAgentContext::receive));
}

void VelnorAgentContext::setAgent(std::optional<VelnorAgent> agent) { std::swap(agent_, agent); }

void VelnorAgentContext::receive(const AgentEvent& event) {
  if (const auto handler = eventHandler_) (*handler)(event);
  if (event.is<AgentEvent::WillMinimize>()) {
    isMinimized_.set(true);
  } else if (event.is<AgentEvent::WillMaximize>()) {
    isMinimized_.set(false);
  }
}

}  // namespace corvane
