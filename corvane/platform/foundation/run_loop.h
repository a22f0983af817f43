/// The main run loop: where everything of the framework happens, and what time it is there.
#pragma once

#include <chrono>
#include <functional>

#include "corvane/export.h"

namespace corvane {

/// The event loop of the main thread, carried by a backend.
///
/// Ownership: owned by the backend that installed it; tasks that have not run when it ends are destroyed unrun.
/// Threads:   `post` from any thread, everything else on the main thread. Tasks run on the main thread.
/// Failure:   none; a task must not throw.
class CORVANE_EXPORT RunLoop {
 public:
  using Task = std::move_only_function<void()>;
  /// Time as the loop sees it, counted from an arbitrary beginning. It never runs backwards.
  using Time = std::chrono::nanoseconds;

  RunLoop() = default;
  RunLoop(const RunLoop&) = delete;
  RunLoop& operator=(const RunLoop&) = delete;
  virtual ~RunLoop();

  /// Runs a task soon, after the tasks posted before it, and never inside this call.
  virtual void post(Task task) = 0;
  /// Runs a task once when the delay has passed, never earlier and never inside this call.
  virtual void schedule(std::chrono::nanoseconds delay, Task task) = 0;
  [[nodiscard]] virtual Time now() const = 0;
  /// Destroys every task that has not run, and those that come later. Called when the backend ends.
  virtual void end() = 0;

  /// The loop of the installed backend. Without one, the program ends with a sentence that says so.
  static RunLoop& main();
  /// Whether a backend, any backend, is installed. There can be one at a time.
  static bool hasMain();
};

}  // namespace corvane
