#include "corvane/declarative/agent_modifiers.h"

#include <memory>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/declarative/agent_context_access.h"

namespace corvane {

ViewAction AgentEventHandlerModifier::setHandler() const {
  return [handler = eventHandler_] { AgentContextAccess::setEventHandler(VelnorAgentContext::shared(), handler); };
}

void AgentEventHandlerModifier::clearHandler() {
  AgentContextAccess::setEventHandler(VelnorAgentContext::shared(), nullptr);
}

void BringAgentToFrontModifier::bringToFront() {
  const MinimizedState& state = MinimizedState::shared();
  if (state.isMinimized()) state.bringToFront();
}

ViewAction MinimizedStateRestoreModifier::registerAction() const {
  return [action = restoreAction_] {
    MinimizedState::shared().registerRestoreAction([action](const std::shared_ptr<VelnorAgentView>& view) {
      const VelnorAgent agent(view);
      if (action) action(agent);
    });
  };
}

void MinimizedStateResetRestoreModifier::resetAction() { MinimizedState::shared().resetRestoreAction(); }

}  // namespace corvane
