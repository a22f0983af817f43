#include "corvane/platform/gtk/glib_run_loop.h"

#include <algorithm>
#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/glib_source.h"

namespace corvane::gtk {

/// The waiting tasks. It outlives the loop for the length of a task that ends the loop.
///
/// One source serves all tasks and timers: its ready time is always that of the next thing to do. A source for each
/// task would make every turn of the main loop look at all of them.
class GlibRunLoop::Queue : public std::enable_shared_from_this<Queue> {
 public:
  void begin() { source_.emplace(whileAlive(weak_from_this(), &Queue::run)); }

  void post(Task task) {
    const std::scoped_lock lock(mutex_);
    if (isEnded_) return;
    posted_.push_back(std::move(task));
    if (posted_.size() == 1) source_->setReadyTime(Time(0));
  }

  void schedule(Time time, Task task) {
    const std::scoped_lock lock(mutex_);
    if (isEnded_) return;
    timers_.push_back({time, nextTimer_++, std::move(task)});
    std::ranges::push_heap(timers_, isLater);
    updateReadyTime();
  }

  void end() {
    std::deque<Task> posted;
    std::vector<Timer> timers;
    {
      const std::scoped_lock lock(mutex_);
      isEnded_ = true;
      posted.swap(posted_);
      timers.swap(timers_);
    }
    source_.reset();
  }

 private:
  struct Timer {
    Time time;
    std::uint64_t number;
    Task task;
  };

  static bool isLater(const Timer& left, const Timer& right) {
    return std::pair(left.time, left.number) > std::pair(right.time, right.number);
  }

  /// Runs what is there now and leaves what these tasks add to the next turn. So tasks that post one another let
  /// the user's input and the pages have their turns, too.
  void run() {
    for (std::size_t count = admitTimers(); count > 0; --count) {
      Task task;
      {
        const std::scoped_lock lock(mutex_);
        if (posted_.empty()) break;
        task = std::move(posted_.front());
        posted_.pop_front();
      }
      task();
    }
    const std::scoped_lock lock(mutex_);
    if (!isEnded_) updateReadyTime();
  }

  /// Puts the timers whose time has come behind the posted tasks; gives the number of tasks to run.
  std::size_t admitTimers() {
    const Time now = monotonicTime();
    const std::scoped_lock lock(mutex_);
    while (!timers_.empty() && timers_.front().time <= now) {
      std::ranges::pop_heap(timers_, isLater);
      posted_.push_back(std::move(timers_.back().task));
      timers_.pop_back();
    }
    return posted_.size();
  }

  void updateReadyTime() {
    if (!posted_.empty()) {
      source_->setReadyTime(Time(0));
    } else if (!timers_.empty()) {
      source_->setReadyTime(timers_.front().time);
    } else {
      source_->setNeverReady();
    }
  }

  std::mutex mutex_;
  bool isEnded_ = false;
  std::deque<Task> posted_;
  std::vector<Timer> timers_;
  std::uint64_t nextTimer_ = 0;
  std::optional<GlibSource> source_;
};

GlibRunLoop::GlibRunLoop() : queue_(std::make_shared<Queue>()) { queue_->begin(); }

GlibRunLoop::~GlibRunLoop() { end(); }

void GlibRunLoop::post(Task task) { queue_->post(std::move(task)); }

void GlibRunLoop::schedule(std::chrono::nanoseconds delay, Task task) {
  assertMainThread();
  const Time now = this->now();
  const Time delayed = std::clamp(delay, Time(0), Time::max() - now);
  queue_->schedule(now + delayed, std::move(task));
}

RunLoop::Time GlibRunLoop::now() const { return monotonicTime(); }

void GlibRunLoop::end() { queue_->end(); }

}  // namespace corvane::gtk
