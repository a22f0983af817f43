#include <webkit/webkit.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/soak/engine_objects.h"
#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/parts.h"
#include "benchmarks/soak/processes.h"
#include "benchmarks/soak/random_source.h"
#include "corvane/agent_view/minimized_state.h"

namespace corvane::soak {

namespace {

constexpr int allViews = 500;
constexpr GrowthBounds bounds{.heap = 1, .resident = 8};

/// How far a view gets before it is destroyed.
enum class Life : std::uint8_t { used, minimizedAndBack, floating, loading, asking, decrementing, inHandler, count };

/// One view after the other: made, loaded, mostly used, and destroyed at one moment or another.
class ViewSoak {
 public:
  ViewSoak(SoakHost& host, const PartOptions& options, Checks& checks)
      : host_(host), checks_(checks), random_(options.seed), total_(allViews * options.percent / 100) {}

  void run();

 private:
  void live(int number);
  void lead(Life life);
  bool minimize();
  void ask(int times);
  void destroy();

  SoakHost& host_;
  Checks& checks_;
  RandomSource random_;
  int total_;
  std::shared_ptr<VelnorAgentView> view_;
  /// Held by everything that is handed to the view.
  std::shared_ptr<int> token_;
  int completions_ = 0;
};

void ViewSoak::ask(int times) {
  for (int count = 0; count < times; ++count) {
    view_->addProductToCart("S", [this, token = token_](const std::optional<AgentError>& error) {
      ++completions_;
      checks_.that(!error, "a request of a short life succeeds");
    });
  }
}

bool ViewSoak::minimize() {
  SoakHost::run(*view_, postScript("{eventType:'SDK_MINIMIZE_AGENT_TOOL'}"));
  return checks_.that(
      host_.runUntil([this] { return view_->isMinimized() && !host_.surface()->window()->isAnimating(); }),
      "the view is minimized");
}

void ViewSoak::lead(Life life) {
  const int times = 1 + static_cast<int>(random_.below(5));
  completions_ = 0;
  switch (life) {
    case Life::used:
      ask(times);
      checks_.that(host_.runUntil([&] { return completions_ == times; }), "all are answered");
      return;
    case Life::minimizedAndBack:
      if (!minimize()) return;
      ask(times);
      view_->maximizeView();
      checks_.that(host_.runUntil([&] { return !view_->isMinimized() && completions_ == times; }), "the view is back");
      return;
    case Life::floating:
      static_cast<void>(minimize());
      return;
    case Life::asking:
      return ask(times);
    case Life::decrementing:
      // Its first half holds the view until the page has answered.
      view_->decrementProductInCart("S", [token = token_](const std::optional<AgentError>&) {});
      return;
    case Life::inHandler:
      view_->setEventHandler([this, token = token_](const AgentEvent& event) {
        if (event.is<AgentEvent::Unauthorized>()) destroy();
      });
      SoakHost::run(*view_, postScript("{eventType:'SDK_UNAUTHORIZED'}"));
      checks_.that(host_.runUntil([this] { return view_ == nullptr; }), "the handler runs");
      return;
    case Life::loading:
    case Life::count:
      return;
  }
}

void ViewSoak::destroy() {
  view_->removeFromSuperview();
  view_.reset();
}

void ViewSoak::live(int number) {
  const auto life = static_cast<Life>(random_.below(static_cast<std::size_t>(Life::count)));
  const std::string name = "view " + std::to_string(number) + ", life " + std::to_string(static_cast<int>(life));
  token_ = std::make_shared<int>(number);
  const std::weak_ptr<int> tokenLeft = token_;
  view_ = host_.addView(random_.happensInPercent(50) ? host_.pages().agentTool() : host_.pages().lightPage());
  view_->setEventHandler([token = token_](const AgentEvent&) {});
  const std::weak_ptr<VelnorAgentView> viewLeft = view_;
  EngineObjects objects;
  objects.watch(SoakHost::engineOf(*view_));
  objects.watch(webkit_web_view_get_user_content_manager(SoakHost::engineOf(*view_)));
  if (life == Life::loading) {
    view_->loadBooking("booking");
    for (std::size_t turns = random_.below(200); turns > 0; --turns) g_main_context_iteration(nullptr, TRUE);
  } else if (checks_.that(host_.loadAndRun(*view_), name + " loads")) {
    lead(life);
  }
  // What floats is held by others.
  if (view_ != nullptr && life != Life::floating) destroy();
  view_.reset();
  token_.reset();
  if (life == Life::floating) {
    checks_.that(!viewLeft.expired(), name + " floats on");
    // Some are removed, and some released when the next one is made.
    if (random_.happensInPercent(50)) {
      MinimizedState::shared().remove();
    } else {
      static_cast<void>(host_.addView(host_.pages().lightPage()));
      const auto& window = host_.surface()->window();
      while (!window->subviews().empty()) window->subviews().back()->removeFromSuperview();
    }
  }
  checks_.that(host_.runUntil([&] { return viewLeft.expired(); }), name + " is gone");
  checks_.that(host_.runUntil([&] { return tokenLeft.expired(); }), name + ": its completions and handlers are gone");
  checks_.that(host_.runUntil([&] { return objects.aliveCount() == 0; }), name + ": its engine objects are gone");
  checks_.that(MinimizedState::shared().agentView() == nullptr, name + ": nobody floats");
  checks_.that(host_.surface()->window()->subviews().empty(), name + ": the window is empty");
}

void ViewSoak::run() {
  MemoryLog memory("views", total_, bounds);
  for (int number = 0; number < total_; ++number) {
    memory.progress(number);
    live(number);
  }
  memory.progress(total_);
  const auto webProcessCount = [] { return std::ranges::count_if(childProcesses(), isWebProcess); };
  checks_.that(host_.runUntil([&] { return webProcessCount() <= 1; }), "no process of a page is left");
  std::printf("views: %d made and destroyed; %d process(es) of pages left\n", total_,
              static_cast<int>(webProcessCount()));
  memory.conclude(checks_);
}

}  // namespace

void soakViews(SoakHost& host, const PartOptions& options, Checks& checks) { ViewSoak(host, options, checks).run(); }

}  // namespace corvane::soak
