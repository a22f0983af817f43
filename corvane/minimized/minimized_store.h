/// What is held of the minimized agent view, apart from what can be done with it.
#pragma once

#include <memory>

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

 private:
  MinimizedStore() = default;

  std::shared_ptr<VelnorAgentView> agentView_;
};

}  // namespace corvane
