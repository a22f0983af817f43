// What an agent view costs apart from its web engine.
#include <benchmark/benchmark.h>

#include <string>

#include "benchmarks/allocation_counter.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"

namespace corvane::benchmarks {
namespace {

void viewConstruction(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  const AllocationReport report(state);
  for (auto _ : state) benchmark::DoNotOptimize(VelnorAgentView::create(Region::eu(), "organisation", false));
}
BENCHMARK(viewConstruction);

void loadBooking(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  auto view = VelnorAgentView::create(Region::eu(), "organisation", false);
  int loads = 0;
  for (auto _ : state) {
    view->loadBooking("booking-7");
    // The engine keeps a record of each load.
    if (++loads % 1000 == 0) view = VelnorAgentView::create(Region::eu(), "organisation", false);
  }
}
BENCHMARK(loadBooking);

}  // namespace
}  // namespace corvane::benchmarks
