#include "corvane/platform/gtk/gtk_frame_meter.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <optional>
#include <vector>

#include "corvane/platform/gtk/signal_connection.h"

namespace corvane::gtk {

using Microseconds = std::chrono::microseconds;

struct FrameMeter::Parts {
  std::vector<Microseconds> times;
  std::optional<SignalConnection> painting;
};

FrameMeter::FrameMeter(GtkWidget* widget) : parts_(std::make_unique<Parts>()) {
  GdkFrameClock* clock = gtk_widget_get_frame_clock(widget);
  if (clock == nullptr) return;
  parts_->painting =
      SignalConnection::make<void(GdkFrameClock*)>(clock, "paint", [times = &parts_->times](GdkFrameClock*) {
        // By the clock on the wall: the frame clock's own times are smoothed.
        times->emplace_back(g_get_monotonic_time());
      });
}

FrameMeter::~FrameMeter() = default;

FrameMeter::Result FrameMeter::result() const {
  const auto& times = parts_->times;
  Result result{.frames = static_cast<int>(times.size())};
  if (times.size() < 2) return result;
  for (std::size_t i = 1; i < times.size(); ++i) {
    result.longestGap = std::max<std::chrono::nanoseconds>(result.longestGap, times[i] - times[i - 1]);
  }
  const std::chrono::duration<double> whole = times.back() - times.front();
  if (whole.count() > 0) result.framesPerSecond = static_cast<double>(times.size() - 1) / whole.count();
  return result;
}

}  // namespace corvane::gtk
