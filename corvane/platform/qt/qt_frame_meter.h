/// How smoothly a surface is redrawn, for apps that measure themselves.
#pragma once

#include <chrono>
#include <memory>

#include "corvane/export.h"

class QQuickWindow;
class QWidget;

namespace corvane::qt {

/// Counts the frames of a widget or of a window of Qt Quick from its making on. Make it right before an animation and
/// read it in the animation's completion. While nothing changes there are no frames, and the wait for one counts as a
/// gap.
///
/// Ownership: owned by whoever measures.
/// Threads:   main thread only.
/// Failure:   none; what is not on screen has no frames.
class CORVANE_EXPORT FrameMeter {
 public:
  struct Result {
    int frames = 0;
    /// 0 for fewer than two frames, as is the gap.
    double framesPerSecond = 0;
    std::chrono::nanoseconds longestGap{};
  };

  explicit FrameMeter(QWidget* widget);
  explicit FrameMeter(QQuickWindow& window);
  FrameMeter(const FrameMeter&) = delete;
  FrameMeter& operator=(const FrameMeter&) = delete;
  ~FrameMeter();

  /// From the first frame to the last one so far.
  [[nodiscard]] Result result() const;

 private:
  class Parts;

  std::unique_ptr<Parts> parts_;
};

}  // namespace corvane::qt
