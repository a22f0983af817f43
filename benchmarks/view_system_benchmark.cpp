// What touches and animations cost in a tree of a thousand views.
#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <vector>

#include "benchmarks/allocation_counter.h"
#include "corvane/platform/headless/headless_backend.h"
#include "corvane/platform/views/ui_pan_gesture_recognizer.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::benchmarks {
namespace {

using namespace std::chrono_literals;

/// Ten panels of ten rows of ten cells, each container under a transform, with a floating view in front.
struct Tree {
  Tree() {
    addLevel(*window, 3);
    floating->addGestureRecognizer(UIPanGestureRecognizer::create([](auto& pan) { benchmark::DoNotOptimize(pan); }));
    floating->addGestureRecognizer(UITapGestureRecognizer::create({}));
    window->addSubview(floating);
  }

  void addLevel(UIView& container, int levels) {
    for (int i = 0; i < 10; ++i) {
      const auto view = UIView::create({{0, i * 10.0}, {100, 100}});
      view->setTransform(CGAffineTransform::makeScale(0.9, 0.9));
      container.addSubview(view);
      views.push_back(view);
      if (levels > 1) addLevel(*view, levels - 1);
    }
  }

  std::vector<std::shared_ptr<UIView>> views;
  std::shared_ptr<UIWindow> window = UIWindow::create({{0, 0}, {390, 844}});
  std::shared_ptr<UIView> floating = UIView::create({{291, 646}, {99, 198}});
};

/// The far corner: every view is looked at, and none is hit.
void hitTestOfAThousandViews(benchmark::State& state) {
  const Tree tree;
  const AllocationReport report(state);
  for (auto _ : state) benchmark::DoNotOptimize(tree.window->hitTest({10, 800}));
}
BENCHMARK(hitTestOfAThousandViews);

void dragOfTenMovements(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  const Tree tree;
  const AllocationReport report(state);
  for (auto _ : state) {
    tree.window->sendTouch({1, TouchPhase::began, {300, 700}});
    for (int i = 1; i <= 10; ++i) tree.window->sendTouch({1, TouchPhase::moved, {300, 700 + i * 5.0}});
    tree.window->sendTouch({1, TouchPhase::ended, {300, 750}});
  }
}
BENCHMARK(dragOfTenMovements);

/// What a backend asks for once a frame, with none, one or all of the views moving.
void presentationOfAThousandViews(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  const Tree tree;
  UIView::animate(1h, [&] {
    for (std::size_t i = 0; i < static_cast<std::size_t>(state.range(0)); ++i) tree.views[i]->setCenter({5, 5});
  });
  backend->runLoop().advance(1s);
  const AllocationReport report(state);
  for (auto _ : state) {
    benchmark::DoNotOptimize(tree.window->isAnimating());
    for (const auto& view : tree.views) benchmark::DoNotOptimize(view->presentation().transformToSuperview());
  }
}
BENCHMARK(presentationOfAThousandViews)->Arg(0)->Arg(1)->Arg(1000);

void beginningOfAnAnimation(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  const Tree tree;
  double x = 0;
  const AllocationReport report(state);
  for (auto _ : state) {
    UIView::animate(250ms, [&] { tree.floating->setCenter({++x, 0}); });
  }
}
BENCHMARK(beginningOfAnAnimation);

}  // namespace
}  // namespace corvane::benchmarks
