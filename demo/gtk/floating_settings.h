/// How the call floats over the host app's screens, for the user to choose.
#pragma once

#include <memory>

#include "corvane/agent_view/velnor_agent_view.h"
#include "demo/gtk/widgets.h"

namespace corvane::demo {

/// A switch for each corner, one for whether a tap brings the call back, and a button that does so at once.
/// The switches count from the next minimizing on.
///
/// Ownership: owned by the screen that shows its widget; it does not keep the view.
/// Threads:   main thread only.
class FloatingSettings {
 public:
  explicit FloatingSettings(const std::shared_ptr<VelnorAgentView>& view);

  [[nodiscard]] GtkWidget* widget() const { return settings_.get(); }
  /// What brings the call back; it can be used while the call floats.
  [[nodiscard]] GtkWidget* restoreButton() const { return restore_.get(); }
  void follow(const AgentEvent& event);

 private:
  WidgetHandle settings_;
  WidgetHandle restore_;
};

}  // namespace corvane::demo
