/// The minimized agent view, within reach of every screen of the host app.
#pragma once

#include <functional>
#include <memory>

#include "corvane/agent_view/agent_operations.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/export.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Keeps the minimized agent view alive while the screen that made it may go away, and lets other screens work with
/// it. Making another agent view releases the one that is held.
///
/// Its product and cart operations are those of the view that is held; without one nothing happens and their
/// completions are never called.
///
/// Ownership: one instance for the process, made on first use; it holds the view strongly.
/// Threads:   main thread only.
/// Failure:   none; without a view everything does nothing.
class CORVANE_EXPORT MinimizedState final : public AgentOperations {
 public:
  using RestoreAction = std::function<void(const std::shared_ptr<VelnorAgentView>&)>;

  static MinimizedState& shared();

  /// The view that was minimized last, until any view has grown back, it is removed or another one is made; null for
  /// none.
  [[nodiscard]] std::shared_ptr<VelnorAgentView> agentView() const;
  [[nodiscard]] bool isMinimized() const;

  /// Brings the view in front of the others of its superview.
  void bringToFront() const;
  /// Makes the view the front-most subview of another one, as it is; does nothing where it is a subview of it already,
  /// also behind others.
  void moveTo(const std::shared_ptr<UIView>& view) const;
  /// What is to be done with the view when it has grown back, in place of what was registered before. It stays
  /// registered until it is replaced or reset.
  void registerRestoreAction(RestoreAction action);
  void resetRestoreAction();
  /// Takes the view off the screen and lets it go. A `VelnorAgentContext` that has the view keeps it.
  void remove() const;
  /// Grows the view back, as `VelnorAgentView::maximizeView` does.
  void maximize() const;

 private:
  MinimizedState() = default;
  ~MinimizedState() = default;
  [[nodiscard]] RequestChannel* requestChannel() const override;
};

}  // namespace corvane
