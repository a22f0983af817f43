#include "corvane/platform/headless/virtual_run_loop.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/foundation/platform.h"

namespace corvane::headless {

VirtualRunLoop::VirtualRunLoop() = default;
VirtualRunLoop::~VirtualRunLoop() { dropTasks(); }

void VirtualRunLoop::dropTasks() {
  // What a task owns may post more on its way out.
  while (pendingTaskCount() > 0) {
    const auto timers = std::exchange(timers_, {});
    std::deque<Task> posted;
    const std::scoped_lock lock(postedMutex_);
    posted.swap(posted_);
  }
}

void VirtualRunLoop::post(Task task) {
  const std::scoped_lock lock(postedMutex_);
  posted_.push_back(std::move(task));
}

void VirtualRunLoop::schedule(std::chrono::nanoseconds delay, Task task) {
  assertMainThread();
  delay = std::clamp(delay, std::chrono::nanoseconds(0), Time::max() - now_);
  timers_.push_back({now_ + delay, nextSequence_++, std::move(task)});
  std::ranges::push_heap(timers_, IsLater{});
}

void VirtualRunLoop::runUntilIdle() { advance(std::chrono::nanoseconds(0)); }

void VirtualRunLoop::advance(std::chrono::nanoseconds duration) {
  const Time end = now_ + std::clamp(duration, std::chrono::nanoseconds(0), Time::max() - now_);
  while (runPostedTask() || runTimerDueBy(end)) {
  }
  // A task may itself have let time pass, and further.
  now_ = std::max(now_, end);
}

std::size_t VirtualRunLoop::pendingTaskCount() const {
  const std::scoped_lock lock(postedMutex_);
  return posted_.size() + timers_.size();
}

bool VirtualRunLoop::runPostedTask() {
  Task task;
  {
    const std::scoped_lock lock(postedMutex_);
    if (posted_.empty()) return false;
    task = std::move(posted_.front());
    posted_.pop_front();
  }
  task();
  return true;
}

bool VirtualRunLoop::runTimerDueBy(Time time) {
  if (timers_.empty() || timers_.front().due > time) return false;
  std::ranges::pop_heap(timers_, IsLater{});
  Timer timer = std::move(timers_.back());
  timers_.pop_back();
  // A task that was late because it lay behind others does not turn time back.
  now_ = std::max(now_, timer.due);
  timer.task();
  return true;
}

}  // namespace corvane::headless
