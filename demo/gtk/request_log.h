/// What became of requests, on the screen and in the terminal.
#pragma once

#include <deque>
#include <string>

#include "demo/gtk/widgets.h"

namespace corvane::demo {

/// The screen shows the newest first, the terminal the oldest.
///
/// Ownership: owned by the screen that shows its widget. Threads: main thread only.
class RequestLog {
 public:
  RequestLog();

  [[nodiscard]] GtkWidget* widget() const { return log_.get(); }
  void add(const std::string& line);

 private:
  WidgetHandle label_;
  WidgetHandle log_;
  std::deque<std::string> lines_;
};

}  // namespace corvane::demo
