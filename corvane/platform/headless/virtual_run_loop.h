/// A run loop whose time is moved by hand.
#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <mutex>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/foundation/run_loop.h"

namespace corvane::headless {

/// A main loop for tests: nothing runs, and no time passes, unless it is told to.
///
/// Threads: `post` from any thread; everything else on the thread that drives the loop.
class CORVANE_EXPORT VirtualRunLoop final : public RunLoop {
 public:
  VirtualRunLoop();
  ~VirtualRunLoop() override;

  void post(Task task) override;
  void schedule(std::chrono::nanoseconds delay, Task task) override;
  [[nodiscard]] Time now() const override { return now_; }
  void end() override { dropTasks(); }

  /// Runs everything that is due now, including what that posts in turn.
  void runUntilIdle();
  /// Lets time pass, and runs everything that falls due on the way at its own time, in order.
  void advance(std::chrono::nanoseconds duration);
  /// Destroys every task that has not run.
  void dropTasks();
  /// How many tasks have not run yet, timers included.
  [[nodiscard]] std::size_t pendingTaskCount() const;

 private:
  struct Timer {
    Time due;
    std::uint64_t sequence;
    Task task;
  };
  struct IsLater {
    bool operator()(const Timer& left, const Timer& right) const {
      return left.due != right.due ? left.due > right.due : left.sequence > right.sequence;
    }
  };

  bool runPostedTask();
  bool runTimerDueBy(Time time);

  Time now_{0};
  std::uint64_t nextSequence_ = 0;
  std::vector<Timer> timers_;
  mutable std::mutex postedMutex_;
  std::deque<Task> posted_;
};

}  // namespace corvane::headless
