#include "corvane/platform/qt/qt_run_loop.h"

#include <QCoreApplication>
#include <QEvent>
#include <QObject>
#include <QThread>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <limits>
#include <optional>
#include <utility>

#include "corvane/platform/engine/task_queue.h"
#include "corvane/platform/foundation/platform.h"

namespace corvane::qt {

namespace {

RunLoop::Time monotonicTime() { return std::chrono::steady_clock::now().time_since_epoch(); }

}  // namespace

/// Wakes the queue up. It outlives the loop for the length of a task that ends the loop.
class QtRunLoop::Clock final : public QObject, public std::enable_shared_from_this<Clock> {
 public:
  Clock() : queue_([this](std::optional<Time> time) { wake(time); }) {
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.setSingleShot(true);
    timer_.callOnTimeout(this, &Clock::run);
  }

  engine::TaskQueue& queue() { return queue_; }

  void end() {
    timer_.stop();
    isEnded_ = true;
    queue_.end();
  }

 protected:
  void customEvent(QEvent*) override {
    isAwaited_ = false;
    run();
  }

 private:
  void run() {
    const auto alive = shared_from_this();
    if (!isEnded_) queue_.run(monotonicTime);
  }

  void wake(std::optional<Time> time) {
    // Events that are posted from inside an event are handled in the same turn, and would leave no turn to the user's
    // input. So on the main thread the timer does it.
    if (QThread::currentThread() != thread()) {
      if (!isAwaited_.exchange(true)) QCoreApplication::postEvent(this, new QEvent(QEvent::User));
      return;
    }
    if (!time) return timer_.stop();
    const auto delay = std::chrono::ceil<std::chrono::milliseconds>(std::max(*time - monotonicTime(), Time(0)));
    // The toolkit's timers reach less far; the queue looks at the clock again.
    constexpr std::chrono::milliseconds farthest{std::numeric_limits<int>::max()};
    timer_.start(*time == Time(0) ? std::chrono::milliseconds(0) : std::min(delay, farthest));
  }

  engine::TaskQueue queue_;
  QTimer timer_;
  std::atomic<bool> isAwaited_ = false;
  bool isEnded_ = false;
};

QtRunLoop::QtRunLoop() : clock_(std::make_shared<Clock>()) {}

QtRunLoop::~QtRunLoop() { end(); }

void QtRunLoop::post(Task task) { clock_->queue().post(std::move(task)); }

void QtRunLoop::schedule(std::chrono::nanoseconds delay, Task task) {
  assertMainThread();
  const Time now = this->now();
  clock_->queue().schedule(now + std::clamp(delay, Time(0), Time::max() - now), std::move(task));
}

RunLoop::Time QtRunLoop::now() const { return monotonicTime(); }

void QtRunLoop::end() { clock_->end(); }

}  // namespace corvane::qt
