/// One call of `UIView::animate`, from its block to its completion.
#pragma once

#include <chrono>
#include <memory>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/views/animation_curve.h"
#include "corvane/platform/views/ui_view_animation.h"

namespace corvane {

/// Knows when its changes begin and end and how far they have come, and how many of them were cut short.
///
/// Ownership: shared by the changes that belong to it and by the task that will complete it.
/// Threads:   main thread only.
class AnimationRun {
 public:
  /// Runs the block at once with a new run as the present one, and has the completion called in time. Durations and
  /// delays below zero count as zero.
  static void perform(AnimationCurve curve, UIViewAnimation animation);
  /// The run whose block is being run, the innermost one; null outside of blocks.
  [[nodiscard]] static const std::shared_ptr<AnimationRun>& current();

  AnimationRun(AnimationCurve curve, RunLoop::Time begin, RunLoop::Time end)
      : curve_(curve), begin_(begin), end_(end) {}

  /// How far the changes have come: 0 at first, 1 in the end.
  [[nodiscard]] double valueAt(RunLoop::Time time) const;
  [[nodiscard]] bool isOverAt(RunLoop::Time time) const { return time >= end_; }

  void noteStarted() { ++started_; }
  void noteCutShort() { ++cutShort_; }

 private:
  [[nodiscard]] bool hasFinished() const { return started_ == 0 || cutShort_ < started_; }

  AnimationCurve curve_;
  RunLoop::Time begin_;
  RunLoop::Time end_;
  int started_ = 0;
  int cutShort_ = 0;
};

}  // namespace corvane
