/// How much memory is in use while a part of the soak runs.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/soak/checks.h"

namespace corvane::soak {

/// Sizes are in MiB.
struct MemoryReading {
  double done = 0;
  /// What this process has in memory.
  double resident = 0;
  /// What it has allocated and not freed.
  double heap = 0;
  /// The shares of the pages' processes and of the network process.
  double webProcesses = 0;
  double network = 0;
  int webProcessCount = 0;
  double openFiles = 0;
};

/// By how much this process may grow from the end of the warm-up to the end of a part, in MiB. Taken from the straight
/// line that lies closest to its readings.
struct GrowthBounds {
  double heap = 0;
  double resident = 0;
  /// A number of open files.
  double openFiles = 8;
};

/// Reads at regular intervals, prints each reading, and judges the growth at the end. The first fifth is warm-up.
class MemoryLog {
 public:
  /// What is done is counted to `total`.
  MemoryLog(std::string_view part, int total, GrowthBounds bounds);

  static void printHeading();
  /// Takes a reading if it is time for one.
  void progress(int done);
  /// Prints the growth, and checks it against the bounds.
  void conclude(Checks& checks) const;

 private:
  [[nodiscard]] double growth(double MemoryReading::* size) const;

  std::string part_;
  int total_;
  GrowthBounds bounds_;
  std::vector<MemoryReading> readings_;
};

}  // namespace corvane::soak
