/// The waiting tasks and timers of a run loop that a toolkit's own loop carries.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "corvane/platform/foundation/run_loop.h"

namespace corvane::engine {

/// Says which task is next, and runs what is due. The toolkit's loop only has to wake it up in time.
///
/// Ownership: owned by a run loop; it outlives the loop for the length of a task that ends the loop.
/// Threads:   `post` from any thread, everything else on the main thread.
/// Failure:   none. What comes after the end is destroyed.
class TaskQueue {
 public:
  using Time = RunLoop::Time;
  /// Told when `run` is to be called next: at a time, where zero means soon, or never. It is called under the queue's
  /// lock, and for "soon" on any thread.
  using Waker = std::function<void(std::optional<Time>)>;

  explicit TaskQueue(Waker waker) : waker_(std::move(waker)) {}

  void post(RunLoop::Task task);
  void schedule(Time time, RunLoop::Task task);
  /// Runs what is there now and leaves what these tasks add to the next turn. So tasks that post one another let
  /// the user's input and the pages have their turns, too.
  void run(const std::function<Time()>& now);
  /// Destroys what has not run. It may be called from inside a task.
  void end();

 private:
  struct Timer {
    Time time;
    std::uint64_t number;
    RunLoop::Task task;
  };

  static bool isLater(const Timer& left, const Timer& right);
  /// Puts the timers whose time has come behind the posted tasks; gives the number of tasks to run.
  std::size_t admitTimers(Time now);
  void wake();

  std::mutex mutex_;
  Waker waker_;
  bool isEnded_ = false;
  std::deque<RunLoop::Task> posted_;
  std::vector<Timer> timers_;
  std::uint64_t nextTimer_ = 0;
};

}  // namespace corvane::engine
