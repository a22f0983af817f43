#include "benchmarks/soak/memory_log.h"

#include <glib.h>
#include <malloc.h>

#include <array>
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
    if (isWebProcess(child)) reading.webProcesses += share;
    if (isNetworkProcess(child)) reading.network += share;
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
    const char* unit;
    double MemoryReading::* size;
    double bound;
  };
  std::string line = part_ + ": growth of the app after the warm-up:";
  const std::array all{Judged{"heap", "MiB ", &MemoryReading::heap, bounds_.heap},
                       Judged{"memory", "MiB ", &MemoryReading::resident, bounds_.resident},
                       Judged{"open files", "", &MemoryReading::openFiles, bounds_.openFiles}};
  for (const auto& [name, unit, size, bound] : all) {
    std::array<char, 100> text{};
    std::snprintf(text.data(), text.size(), "  %s %+.2f %s(bound %.0f)", name, growth(size), unit, bound);
    line += text.data();
  }
  std::puts(line.c_str());
  for (const Judged& judged : all)
    checks.that(growth(judged.size) <= judged.bound, std::string(judged.name) + " grows");
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
