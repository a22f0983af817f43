#include "corvane/platform/views/animation_run.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/foundation/main_thread_state.h"

namespace corvane {

namespace {

constinit const std::shared_ptr<AnimationRun> noRun;

/// Makes a run the present one for the length of its block, also when the block throws.
class BlockScope {
 public:
  explicit BlockScope(std::shared_ptr<AnimationRun> run)
      : outer_(std::exchange(mainThreadState().animationRun, std::move(run))) {}
  BlockScope(const BlockScope&) = delete;
  BlockScope& operator=(const BlockScope&) = delete;
  ~BlockScope() {
    if (MainThreadState* const state = findMainThreadState()) state->animationRun = std::move(outer_);
  }

 private:
  std::shared_ptr<AnimationRun> outer_;
};

std::chrono::nanoseconds sane(std::chrono::nanoseconds length) {
  // Far beyond any animation, and sums of it still fit.
  constexpr std::chrono::nanoseconds longest = std::chrono::years(10);
  return std::clamp(length, std::chrono::nanoseconds(0), longest);
}

}  // namespace

const std::shared_ptr<AnimationRun>& AnimationRun::current() {
  const MainThreadState* const state = findMainThreadState();
  return state == nullptr ? noRun : state->animationRun;
}

void AnimationRun::perform(AnimationCurve curve, UIViewAnimation animation) {
  RunLoop& loop = RunLoop::main();
  const std::chrono::nanoseconds delay = sane(animation.delay);
  const std::chrono::nanoseconds duration = sane(animation.duration);
  const RunLoop::Time begin = loop.now() + delay;
  const auto run = std::make_shared<AnimationRun>(curve, begin, begin + duration);
  if (animation.completion) {
    loop.schedule(delay + duration,
                  [run, completion = std::move(animation.completion)]() mutable { completion(run->hasFinished()); });
  }
  if (!animation.animations) return;
  const BlockScope scope(run);
  animation.animations();
}

double AnimationRun::valueAt(RunLoop::Time time) const {
  if (time >= end_) return 1;
  if (time <= begin_) return 0;
  using Nanoseconds = std::chrono::duration<double, std::nano>;
  return curve_.valueAt(Nanoseconds(time - begin_) / Nanoseconds(end_ - begin_));
}

}  // namespace corvane
