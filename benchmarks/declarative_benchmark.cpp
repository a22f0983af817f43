// What screens of view values cost apart from the platform views that they show.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <memory>
#include <utility>

#include "benchmarks/allocation_counter.h"
#include "corvane/declarative/agent_modifiers.h"
#include "corvane/declarative/velnor_agent.h"
#include "corvane/platform/declarative/box.h"
#include "corvane/platform/declarative/conditional_view.h"
#include "corvane/platform/declarative/view_mount.h"
#include "corvane/platform/declarative/z_stack.h"
#include "corvane/platform/headless/headless_backend.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/reset_context.h"

namespace corvane::benchmarks {
namespace {

class Model : public ObservableObject {
 public:
  Published<int> count{*this};
};

/// A screen as a shop has it: an agent, an indicator, and what it does with events.
struct CallScreen {
  Model* model;

  [[nodiscard]] auto body() const {
    benchmark::DoNotOptimize(model->count.value());
    VelnorAgent agent(Region::eu(), "shop-42", "booking-7", false);
    agent.setTapToMaximize(true);
    return ZStack{std::move(agent), when(VelnorAgentContext::shared().isMinimized(),
                                         [] { return EmptyView{} | box({.backgroundColor = UIColor{.green = 1}}); })} |
           onAgentEvent([](const AgentEvent&) {}) | bringAgentToFront();
  }
};

struct HomeScreen {
  [[nodiscard]] static auto body() {
    return EmptyView{} | onAgentEvent([](const AgentEvent&) {}) |
           restoreAgentAction([](const VelnorAgent& agent) { benchmark::DoNotOptimize(&agent); }) |
           resetAgentRestoreAction();
  }
};

struct Stage {
  Stage() = default;
  Stage(const Stage&) = delete;
  Stage& operator=(const Stage&) = delete;
  ~Stage() { resetContext(); }

  std::unique_ptr<headless::Backend> backend = headless::Backend::install().value();
  std::shared_ptr<UIWindow> window = UIWindow::create({{0, 0}, {390, 844}});
  Model model;
  std::shared_ptr<ViewMount> mount = ViewMount::create(*window);
};

/// From a published change to the screen that follows it, the run loop's turn included.
void reevaluationOfAScreenWithAnAgent(benchmark::State& state) {
  Stage stage;
  stage.mount->show(CallScreen{&stage.model});
  const auto view = VelnorAgentContext::shared().agentView();
  {
    const AllocationReport report(state);
    for (auto _ : state) {
      stage.model.count.set(1);
      stage.backend->runLoop().runUntilIdle();
    }
  }
  if (VelnorAgentContext::shared().agentView() != view) state.SkipWithError("a platform view was made");
}
BENCHMARK(reevaluationOfAScreenWithAnAgent);

/// Coming and going of a screen without an agent view, again and again on one host.
void appearAndDisappear(benchmark::State& state) {
  const Stage stage;
  const AllocationReport report(state);
  for (auto _ : state) {
    for (std::int64_t cycle = 0; cycle < state.range(0); ++cycle) {
      stage.mount->show(HomeScreen{});
      stage.mount->remove();
    }
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(appearAndDisappear)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

/// The same with an agent, whose view is made and ended in each cycle.
void appearAndDisappearWithAnAgent(benchmark::State& state) {
  Stage stage;
  for (auto _ : state) {
    for (std::int64_t cycle = 0; cycle < state.range(0); ++cycle) {
      stage.mount->show(CallScreen{&stage.model});
      stage.mount->remove();
    }
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(appearAndDisappearWithAnAgent)
    ->Arg(100)
    ->Arg(1000)
    ->Arg(10000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace corvane::benchmarks
