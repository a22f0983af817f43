#include "corvane/platform/engine/task_queue.h"

#include <algorithm>
#include <utility>

namespace corvane::engine {

void TaskQueue::post(RunLoop::Task task) {
  const std::scoped_lock lock(mutex_);
  if (isEnded_) return;
  posted_.push_back(std::move(task));
  if (posted_.size() == 1) waker_(Time(0));
}

void TaskQueue::schedule(Time time, RunLoop::Task task) {
  const std::scoped_lock lock(mutex_);
  if (isEnded_) return;
  timers_.push_back({time, nextTimer_++, std::move(task)});
  std::ranges::push_heap(timers_, isLater);
  wake();
}

void TaskQueue::run(const std::function<Time()>& now) {
  for (std::size_t count = admitTimers(now()); count > 0; --count) {
    RunLoop::Task task;
    {
      const std::scoped_lock lock(mutex_);
      if (posted_.empty()) break;
      task = std::move(posted_.front());
      posted_.pop_front();
    }
    task();
  }
  const std::scoped_lock lock(mutex_);
  if (!isEnded_) wake();
}

void TaskQueue::end() {
  // What tasks own may post once more while it ends, so the lock is free by then.
  std::deque<RunLoop::Task> posted;
  std::vector<Timer> timers;
  {
    const std::scoped_lock lock(mutex_);
    isEnded_ = true;
    posted.swap(posted_);
    timers.swap(timers_);
  }
}

bool TaskQueue::isLater(const Timer& left, const Timer& right) {
  return std::pair(left.time, left.number) > std::pair(right.time, right.number);
}

std::size_t TaskQueue::admitTimers(Time now) {
  const std::scoped_lock lock(mutex_);
  while (!timers_.empty() && timers_.front().time <= now) {
    std::ranges::pop_heap(timers_, isLater);
    posted_.push_back(std::move(timers_.back().task));
    timers_.pop_back();
  }
  return posted_.size();
}

void TaskQueue::wake() {
  if (!posted_.empty()) return waker_(Time(0));
  waker_(timers_.empty() ? std::optional<Time>() : timers_.front().time);
}

}  // namespace corvane::engine
