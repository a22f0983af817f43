/// Counts what is allocated on the heap.
#pragma once

#include <cstdint>

#include <benchmark/benchmark.h>

namespace corvane::benchmarks {

/// How often anything was allocated since the program began.
[[nodiscard]] std::uint64_t allocationCount();
/// How many bytes all blocks take that are allocated now, with what the heap adds to each.
[[nodiscard]] std::uint64_t allocatedBytes();

/// Reports the allocations of each iteration from its construction to its end.
class AllocationReport {
 public:
  explicit AllocationReport(benchmark::State& state) : state_(state) {}
  AllocationReport(const AllocationReport&) = delete;
  AllocationReport& operator=(const AllocationReport&) = delete;
  ~AllocationReport() {
    state_.counters["allocations"] =
        benchmark::Counter(static_cast<double>(allocationCount() - before_), benchmark::Counter::kAvgIterations);
  }

 private:
  benchmark::State& state_;
  std::uint64_t before_ = allocationCount();
};

}  // namespace corvane::benchmarks
