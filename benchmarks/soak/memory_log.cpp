#include "benchmarks/soak/memory_log.h"

#include <malloc.h>

#include <cstdio>

#include "benchmarks/soak/processes.h"

namespace corvane::soak {

namespace {

constexpr int intervals = 10;
constexpr int warmUpIntervals = 2;

MemoryReading readMemory(int done) {
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
  std::printf("| %s | %d | %.1f | %.2f | %d | %.1f | %.1f | %d |\n", part_.c_str(), done, reading.resident,
              reading.heap, reading.webProcessCount, reading.webProcesses, reading.network, reading.openFiles);
  std::fflush(stdout);
}

void MemoryLog::conclude(Checks& checks) const {
  const double heap = growth(&MemoryReading::heap);
  const double resident = growth(&MemoryReading::resident);
  std::printf(
      "%s: after the warm-up the app's heap grew by %.2f MiB (bound %.2f), its memory by %.1f MiB (bound %.1f)\n",
      part_.c_str(), heap, bounds_.heap, resident, bounds_.resident);
  checks.that(heap <= bounds_.heap, "the heap of the app grows");
  checks.that(resident <= bounds_.resident, "the memory of the app grows");
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
