#include "benchmarks/soak/memory_log.h"

#include <glib.h>
#include <malloc.h>

#include <cstdio>

#include "benchmarks/soak/processes.h"

namespace corvane::soak {

namespace {

constexpr int intervals = 10;
constexpr int warmUpIntervals = 2;
constexpr int settlingTurns = 50;

MemoryReading readMemory(int done) {
  // What is on its way to its end gets there first.
  for (int turn = 0; turn < settlingTurns; ++turn) g_main_context_iteration(nullptr, TRUE);
  malloc_trim(0);
  MemoryReading reading{.done = static_cast<double>(done)};
  reading.resident = mebibytesIn("/proc/self/status", "VmRSS:");
  const struct mallinfo2 heap = mallinfo2();
  reading.heap = static_cast<double>(heap.uordblks + heap.hblkhd) / (1024 * 1024);
  for (const ChildProcess& child : childProcesses()) {
    const double share = mebibytesIn("/proc/" + std::to_string(child.id) + "/smaps_rollup", "Pss:");
    (isWebProcess(child) ? reading.webProcesses : reading.network) += share;
    if (isWebProcess(child)) ++reading.webProcessCount;
  }
  reading.openFiles = openFileCount();
  return reading;
}

}  // namespace

MemoryLog::MemoryLog(std::string_view part, int total, GrowthBounds bounds)
    : part_(part), total_(total), bounds_(bounds) {}

void MemoryLog::printHeading() {
  std::puts("| part | done | app MiB | app heap MiB | web processes | their MiB | network MiB | open files |");
  std::puts("|---|---:|---:|---:|---:|---:|---:|---:|");
}

void MemoryLog::progress(int done) {
  const auto place = static_cast<double>(readings_.size()) * total_ / intervals;
  if (done < place) return;
  const MemoryReading reading = readMemory(done);
  readings_.push_back(reading);
  std::printf("| %s | %d | %.1f | %.2f | %d | %.1f | %.1f | %.0f |\n", part_.c_str(), done, reading.resident,
              reading.heap, reading.webProcessCount, reading.webProcesses, reading.network, reading.openFiles);
  std::fflush(stdout);
}

void MemoryLog::conclude(Checks& checks) const {
  struct Judged {
    const char* name;
    double MemoryReading::* size;
    double bound;
  };
  std::printf("%s: growth of the app after the warm-up:", part_.c_str());
  for (const auto& [name, size, bound] : {Judged{"heap MiB", &MemoryReading::heap, bounds_.heap},
                                          Judged{"memory MiB", &MemoryReading::resident, bounds_.resident},
                                          Judged{"open files", &MemoryReading::openFiles, bounds_.openFiles}}) {
    std::printf("  %s %.2f (bound %.0f)", name, growth(size), bound);
    checks.that(growth(size) <= bound, std::string(name) + " grow");
  }
  std::puts("");
}

double MemoryLog::growth(double MemoryReading::* size) const {
  double count = 0;
  double meanDone = 0;
  double meanSize = 0;
  for (std::size_t place = warmUpIntervals; place < readings_.size(); ++place) {
    ++count;
    meanDone += readings_[place].done;
    meanSize += readings_[place].*size;
  }
  if (count < 2) return 0;
  meanDone /= count;
  meanSize /= count;
  double covariance = 0;
  double variance = 0;
  for (std::size_t place = warmUpIntervals; place < readings_.size(); ++place) {
    const double distance = readings_[place].done - meanDone;
    covariance += distance * (readings_[place].*size - meanSize);
    variance += distance * distance;
  }
  const double range = readings_.back().done - readings_[warmUpIntervals].done;
  return variance > 0 ? covariance / variance * range : 0;
}

}  // namespace corvane::soak
