/// The shared context as it was at the beginning.
#pragma once

#include <optional>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/declarative/agent_context_access.h"

namespace corvane {

inline void resetContext() {
  VelnorAgentContext& context = VelnorAgentContext::shared();
  AgentContextAccess::setEventHandler(context, nullptr);
  if (context.isMinimized()) {
    // Only an agent view's announcement turns that off.
    const auto view = VelnorAgentView::create(Region::eu(), "", false);
    AgentContextAccess::setAgentView(context, view);
    AgentViewAccess::parts(*view).emitEvent(AgentEvent::WillMaximize{});
  }
  AgentContextAccess::setAgentView(context, nullptr);
  AgentContextAccess::setAgent(context, std::nullopt);
}

}  // namespace corvane
