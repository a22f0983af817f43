#include <webkit/webkit.h>

#include <csignal>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/outcome.h"
#include "benchmarks/soak/parts.h"
#include "benchmarks/soak/processes.h"
#include "benchmarks/soak/random_source.h"

namespace corvane::soak {

namespace {

constexpr int allLosses = 50;
constexpr GrowthBounds bounds{.heap = 1, .resident = 6};

/// When the process of the page is lost.
enum class Moment : std::uint8_t { idle, asking, loading, count };

/// One view whose page loses its process again and again.
class ProcessSoak {
 public:
  ProcessSoak(SoakHost& host, const PartOptions& options, Checks& checks)
      : host_(host), checks_(checks), random_(options.seed), total_(allLosses * options.percent / 100) {}

  void run();

 private:
  void lose(int number);
  void endProcess(bool byEngine);
  void answerNever() const { SoakHost::run(*view_, "agentTool.setTrouble({kind:'never'});0"); }
  /// The outcomes come in the order of the completions.
  void ask(int times);

  SoakHost& host_;
  Checks& checks_;
  RandomSource random_;
  int total_;
  std::shared_ptr<VelnorAgentView> view_ = host_.addView(host_.pages().agentTool());
  std::vector<std::string> outcomes_;
  int errorEvents_ = 0;
  int lostPending_ = 0;
};

void ProcessSoak::ask(int times) {
  for (int count = 0; count < times; ++count) {
    view_->isProductInCart("S", [this, count](const AgentResult<bool>& answer) {
      outcomes_.push_back(std::to_string(count) + " " + outcomeOf(answer));
    });
  }
}

void ProcessSoak::endProcess(bool byEngine) {
  if (byEngine) return webkit_web_view_terminate_web_process(SoakHost::engineOf(*view_));
  // The engine may keep a process in store; whichever of them is the page's, it is gone.
  for (const ChildProcess& child : childProcesses()) {
    if (isWebProcess(child)) kill(child.id, SIGKILL);
  }
}

void ProcessSoak::lose(int number) {
  const auto moment =
      static_cast<Moment>(static_cast<std::size_t>(number / 2) % static_cast<std::size_t>(Moment::count));
  const bool byEngine = number % 2 == 0;
  const std::string name = "loss " + std::to_string(number);
  const int times = moment == Moment::asking ? 2 + static_cast<int>(random_.below(4)) : 0;
  outcomes_.clear();
  errorEvents_ = 0;
  if (moment == Moment::asking) {
    answerNever();
    ask(times);
    // The first one is on its way or with the page.
    for (std::size_t turns = 1 + random_.below(50); turns > 0; --turns) g_main_context_iteration(nullptr, TRUE);
  }
  if (moment == Moment::loading) {
    view_->loadBooking("lost");
    for (std::size_t turns = random_.below(60); turns > 0; --turns) g_main_context_iteration(nullptr, TRUE);
  }
  endProcess(byEngine);
  if (!checks_.that(host_.runUntil([this] { return errorEvents_ > 0; }), name + " is told")) return;
  checks_.that(view_->error() && view_->error()->kind == WebError::Kind::processTerminated, name + " has its reason");
  if (moment != Moment::asking) checks_.areEqual(std::to_string(errorEvents_), "1", name + " is told once");
  // The first one is lost with the process; those behind it are asked of the new page.
  if (!checks_.that(host_.loadAndRun(*view_), name + ": the page loads again")) return;
  lostPending_ += moment == Moment::asking ? 1 : 0;
  ask(3);
  const auto all = static_cast<std::size_t>(times) + 3;
  checks_.that(host_.runUntil([&] { return outcomes_.size() == all; }), name + ": every request ends");
  std::vector<std::string> expected;
  for (int count = 0; count < times; ++count) {
    expected.push_back(std::to_string(count) + (count == 0 ? " time-out" : " false"));
  }
  for (int count = 0; count < 3; ++count) expected.push_back(std::to_string(count) + " false");
  for (std::size_t place = 0; place < outcomes_.size() && place < all; ++place) {
    checks_.areEqual(outcomes_[place], expected[place], name + ": the outcome");
  }
}

void ProcessSoak::run() {
  view_->setEventHandler([this](const AgentEvent& event) {
    if (event.is<AgentEvent::Error>()) ++errorEvents_;
  });
  MemoryLog memory("processes", total_, bounds);
  if (!checks_.that(host_.loadAndRun(*view_), "the page loads")) return;
  for (int number = 0; number < total_; ++number) {
    memory.progress(number);
    lose(number);
  }
  memory.progress(total_);
  std::printf("processes: %d lost, half of them ended by the engine and half killed; %d with requests under way\n",
              total_, lostPending_);
  checks_.that(host_.end(view_), "nothing holds the view");
  memory.conclude(checks_);
}

}  // namespace

void soakProcesses(SoakHost& host, const PartOptions& options, Checks& checks) {
  ProcessSoak(host, options, checks).run();
}

}  // namespace corvane::soak
