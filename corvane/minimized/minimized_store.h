/// What is held of the minimized agent view, apart from what can be done with it.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace corvane {

class VelnorAgentView;

/// The one place that keeps a minimized agent view alive while the screen that made it is gone.
///
/// Ownership: one for the process, made on first use and never released; it holds the view strongly.
/// Threads:   main thread only.
class MinimizedStore {
 public:
  static MinimizedStore& shared();

  [[nodiscard]] std::shared_ptr<VelnorAgentView> agentView() const { return agentView_; }
  void setAgentView(std::shared_ptr<VelnorAgentView> view);

  /// Puts a view that has grown back where the host app wants it; empty where nothing is to be done.
  using RestoreAction = std::function<void(const std::shared_ptr<VelnorAgentView>&)>;
  [[nodiscard]] RestoreAction restoreAction() const { return restoreAction_; }
  void setRestoreAction(RestoreAction action) { restoreAction_ = std::move(action); }

 private:
  MinimizedStore() = default;

  std::shared_ptr<VelnorAgentView> agentView_;
  RestoreAction restoreAction_;
};

}  // namespace corvane
