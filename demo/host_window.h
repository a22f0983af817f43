/// The host app of the demo: a phone-sized window with the agent view in it.
#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <string>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "demo/demo_options.h"

namespace corvane::demo {

/// Shows one agent view, prints its events and, on a tour, takes pictures of it and ends with the call.
///
/// Ownership: owned by main; closing the window ends the loop. Threads: main thread only.
class HostWindow {
 public:
  HostWindow(const DemoOptions& options, const std::string& pageAddress, GMainLoop* loop);
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow();

  void show();
  /// Whether the call has ended as a tour is meant to.
  [[nodiscard]] bool hasCallEnded() const;

 private:
  class Screen;
  std::shared_ptr<Screen> screen_;
};

}  // namespace corvane::demo
