/// The main run loop on top of the GLib default main context.
#pragma once

#include <memory>

#include "corvane/platform/foundation/run_loop.h"

namespace corvane::gtk {

/// Runs tasks and timers whenever the host app runs the GLib main context, nested loops included.
///
/// Ownership: owned by the backend and by the engines it made. `end` is the end of its work; afterwards new tasks are
///            destroyed at once.
/// Threads:   as every run loop.
class GlibRunLoop final : public RunLoop {
 public:
  GlibRunLoop();
  ~GlibRunLoop() override;

  void post(Task task) override;
  void schedule(std::chrono::nanoseconds delay, Task task) override;
  [[nodiscard]] Time now() const override;

  /// It may be called from inside a task.
  void end() override;

 private:
  class Clock;

  std::shared_ptr<Clock> clock_;
};

}  // namespace corvane::gtk
