#include "corvane/platform/qt/qt_frame_meter.h"

#include <QEvent>
#include <QWidget>
#include <QtQuick/QQuickWindow>
#include <algorithm>
#include <vector>

namespace corvane::qt {

class FrameMeter::Parts final : public QObject {
 public:
  explicit Parts(QWidget* widget) {
    if (widget != nullptr) widget->installEventFilter(this);
  }
  explicit Parts(QQuickWindow& window) { connect(&window, &QQuickWindow::afterAnimating, this, &Parts::count); }

  [[nodiscard]] const std::vector<std::chrono::nanoseconds>& times() const { return times_; }

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::Paint) count();
    return false;
  }

 private:
  void count() { times_.emplace_back(std::chrono::steady_clock::now().time_since_epoch()); }

  std::vector<std::chrono::nanoseconds> times_;
};

FrameMeter::FrameMeter(QWidget* widget) : parts_(std::make_unique<Parts>(widget)) {}

FrameMeter::FrameMeter(QQuickWindow& window) : parts_(std::make_unique<Parts>(window)) {}

FrameMeter::~FrameMeter() = default;

FrameMeter::Result FrameMeter::result() const {
  const auto& times = parts_->times();
  Result result{.frames = static_cast<int>(times.size())};
  if (times.size() < 2) return result;
  for (std::size_t i = 1; i < times.size(); ++i) {
    result.longestGap = std::max(result.longestGap, times[i] - times[i - 1]);
  }
  const std::chrono::duration<double> whole = times.back() - times.front();
  if (whole.count() > 0) result.framesPerSecond = static_cast<double>(times.size() - 1) / whole.count();
  return result;
}

}  // namespace corvane::qt
