/// A line on the terminal that says how far a long run has come.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>
#include <vector>

namespace corvane::tools {

/// Writes to standard error, and only when that is a terminal and the run is long enough to wait for.
///
/// Threads: any, one at a time.
class ProgressLine {
 public:
  explicit ProgressLine(const std::vector<std::string>& paths);

  /// Files are counted from 1.
  void update(std::size_t fileNumber, std::size_t productsDone, std::size_t bytesDone);
  /// Makes room for another line; the next update shows it again.
  void clear();

 private:
  using Clock = std::chrono::steady_clock;

  std::size_t fileCount_;
  std::size_t totalBytes_ = 0;  ///< 0 if not known
  bool isTerminal_;
  bool isShown_ = false;
  Clock::time_point begin_;
  Clock::time_point nextUpdate_;
};

}  // namespace corvane::tools
