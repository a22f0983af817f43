#include "corvane/platform/gtk/glib_run_loop.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "corvane/platform/engine/task_queue.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/glib_source.h"

namespace corvane::gtk {

/// Wakes the queue up. It outlives the loop for the length of a task that ends the loop.
///
/// One source serves all tasks and timers: its ready time is always that of the next thing to do. A source for each
/// task would make every turn of the main loop look at all of them.
class GlibRunLoop::Clock : public std::enable_shared_from_this<Clock> {
 public:
  Clock() : queue_([this](std::optional<Time> time) { wake(time); }) {}

  void begin() {
    source_.emplace(whileAlive(weak_from_this(), [](Clock& self) { self.queue_.run(monotonicTime); }));
  }
  engine::TaskQueue& queue() { return queue_; }
  void end() {
    queue_.end();
    source_.reset();
  }

 private:
  void wake(std::optional<Time> time) {
    if (time) {
      source_->setReadyTime(*time);
    } else {
      source_->setNeverReady();
    }
  }

  engine::TaskQueue queue_;
  std::optional<GlibSource> source_;
};

GlibRunLoop::GlibRunLoop() : clock_(std::make_shared<Clock>()) { clock_->begin(); }

GlibRunLoop::~GlibRunLoop() { end(); }

void GlibRunLoop::post(Task task) { clock_->queue().post(std::move(task)); }

void GlibRunLoop::schedule(std::chrono::nanoseconds delay, Task task) {
  assertMainThread();
  const Time now = this->now();
  const Time delayed = std::clamp(delay, Time(0), Time::max() - now);
  clock_->queue().schedule(now + delayed, std::move(task));
}

RunLoop::Time GlibRunLoop::now() const { return monotonicTime(); }

void GlibRunLoop::end() { clock_->end(); }

}  // namespace corvane::gtk
