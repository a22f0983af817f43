/// What the agent's context has for the framework's own code and its tests.
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

  /// For tests: a context of one's own, and the shared one as it was at the beginning.
  static std::shared_ptr<VelnorAgentContext> makeContext() {
    return std::make_shared<VelnorAgentContext>(VelnorAgentContext::ConstructionKey{});
  }
  static void reset(VelnorAgentContext& context) {
    setEventHandler(context, nullptr);
    setAgentView(context, nullptr);
    setAgent(context, std::nullopt);
    if (context.isMinimized()) context.isMinimized_.set(false);
  }
};

}  // namespace corvane
