/// What the agent's context has for the framework's own code.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "corvane/declarative/velnor_agent_context.h"

namespace corvane {

/// Opens the context to the rest of the framework.
class AgentContextAccess {
 public:
  static void setAgentView(VelnorAgentContext& context, std::shared_ptr<VelnorAgentView> view) {
    context.setAgentView(std::move(view));
  }
  static void setAgent(VelnorAgentContext& context, std::optional<VelnorAgent> agent) {
    context.setAgent(std::move(agent));
  }
  static void setEventHandler(VelnorAgentContext& context, AgentEventHandler handler) {
    auto shared = handler ? std::make_shared<const AgentEventHandler>(std::move(handler)) : nullptr;
    std::swap(context.eventHandler_, shared);
  }
};

}  // namespace corvane
