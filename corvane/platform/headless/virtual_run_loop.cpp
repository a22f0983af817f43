#include "corvane/platform/headless/virtual_run_loop.h"

#include <algorithm>
#include <utility>

namespace corvane::headless {

VirtualRunLoop::VirtualRunLoop() = default;
VirtualRunLoop::~VirtualRunLoop() = default;

void VirtualRunLoop::post(Task task) {
  const std::scoped_lock lock(postedMutex_);
  posted_.push_back(std::move(task));
}

void VirtualRunLoop::schedule(std::chrono::nanoseconds delay, Task task) {
  timers_.push_back({now_ + std::max(delay, std::chrono::nanoseconds(0)), nextSequence_++, std::move(task)});
  std::ranges::push_heap(timers_, IsLater{});
}

void VirtualRunLoop::runUntilIdle() { advance(std::chrono::nanoseconds(0)); }

void VirtualRunLoop::advance(std::chrono::nanoseconds duration) {
  const Time end = now_ + duration;
  while (runPostedTask() || runTimerDueBy(end)) {
  }
  now_ = end;
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
