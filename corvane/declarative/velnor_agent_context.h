/// The agent, within reach of every screen of the host app.
#pragma once

#include <memory>
#include <optional>

#include "corvane/agent_view/agent_operations.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/declarative/velnor_agent.h"
#include "corvane/export.h"
#include "corvane/platform/declarative/observable_object.h"

namespace corvane {

/// Knows the agent view that was mounted last, or that a `VelnorAgent` was made around since, and drives it.
///
/// Its product and cart operations are those of that view; without one nothing happens and their completions are never
/// called.
///
/// Ownership: one instance for the process, made on first use; it holds the view strongly.
/// Threads:   main thread only.
/// Failure:   none; without a view everything does nothing.
class CORVANE_EXPORT VelnorAgentContext final : public ObservableObject,
                                                public AgentOperations,
                                                public std::enable_shared_from_this<VelnorAgentContext> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static VelnorAgentContext& shared();
  explicit VelnorAgentContext(ConstructionKey /*key*/) {}
  ~VelnorAgentContext() = default;

  /// What an agent view of this context announced last: true from the start of a shrinking to the start of a growing
  /// back. A floating view that is taken off the screen or replaced announces nothing. A body that reads it follows it.
  [[nodiscard]] bool isMinimized() const { return isMinimized_.value(); }
  /// The same, to be followed from elsewhere.
  [[nodiscard]] const Published<bool>& publishedIsMinimized() const CORVANE_LIFETIMEBOUND { return isMinimized_; }

  /// A copy of the agent value that was made last, as it was when it was made; none once an agent has gone.
  [[nodiscard]] const std::optional<VelnorAgent>& agent() const CORVANE_LIFETIMEBOUND { return agent_; }
  /// Null for none.
  [[nodiscard]] const std::shared_ptr<VelnorAgentView>& agentView() const CORVANE_LIFETIMEBOUND { return agentView_; }
  /// Grows a minimized agent back, as `VelnorAgentView::maximizeView` does.
  void maximizeAgent();

 private:
  friend class AgentContextAccess;

  void setAgentView(std::shared_ptr<VelnorAgentView> view);
  void setAgent(std::optional<VelnorAgent> agent);
  void receive(const AgentEvent& event);
  [[nodiscard]] RequestChannel* requestChannel() const override;

  Published<bool> isMinimized_{*this};
  std::optional<VelnorAgent> agent_;
  /// Shared so that a handler may replace itself, and be called without copying what it captured.
  std::shared_ptr<const AgentEventHandler> eventHandler_;
  std::shared_ptr<VelnorAgentView> agentView_;
};

}  // namespace corvane
