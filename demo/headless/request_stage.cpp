#include "demo/headless/request_stage.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "corvane/platform/foundation/while_alive.h"

namespace corvane::demo {

using namespace std::chrono_literals;

std::shared_ptr<RequestStage> RequestStage::create() {
  std::shared_ptr<RequestStage> stage(new RequestStage);
  stage->view_->loadBooking("booking-7");
  stage->settle();
  stage->page_->postCallStatus(CallSessionStatus::running);
  stage->view_->setEventHandler(whileAlive(std::weak_ptr(stage), &RequestStage::printEvent));
  return stage;
}

RequestStage::RequestStage()
    : backend_(headless::Backend::install().value()),
      view_(VelnorAgentView::create(Region::custom("https://agent-tool.example.com"), "shop-42", true)),
      page_(simulation::SimulatedAgentTool::attach(view_)) {}

RequestStage::~RequestStage() {
  view_.reset();
  backend_->runLoop().dropTasks();
}

void RequestStage::say(std::string_view line) const {
  std::printf("%7.3f s  %.*s\n", std::chrono::duration<double>(now()).count(), static_cast<int>(line.size()),
              line.data());
}

void RequestStage::check(bool isTrue, std::string_view line) {
  isAsExpected_ = isAsExpected_ && isTrue;
  say(std::string(line) + (isTrue ? "" : "   <- NOT SO"));
}

bool RequestStage::areAllComplete() const {
  return std::ranges::all_of(steps_, [](const Step& step) { return step.completions == 1; });
}

void RequestStage::dropView() { view_.reset(); }

bool RequestStage::finish() {
  advance(20s);
  for (const Step& step : steps_) {
    const bool isWanted = step.expectedOutcome != never;
    if (isWanted && step.completions == 0) check(false, step.request + " -> " + step.expectedOutcome);
    if (!isWanted && step.completions == 0) say(step.request + " -> " + std::string(never));
  }
  return isAsExpected_;
}

RequestStage::Duration RequestStage::now() const {
  return std::chrono::duration_cast<Duration>(backend_->runLoop().now());
}

std::size_t RequestStage::addStep(std::string request, std::string outcome, Duration time) {
  steps_.push_back(
      {.request = std::move(request), .expectedOutcome = std::move(outcome), .expectedTime = time, .completions = 0});
  return steps_.size() - 1;
}

void RequestStage::complete(std::size_t index, const std::string& outcome) {
  Step& step = steps_[index];
  std::string line = step.request + " -> " + outcome;
  const bool isExpected = ++step.completions == 1 && outcome == step.expectedOutcome && now() == step.expectedTime;
  if (!isExpected) {
    isAsExpected_ = false;
    line.append("   <- EXPECTED once ").append(step.expectedOutcome);
    line.append(" at ").append(std::to_string(step.expectedTime.count())).append(" ms");
  }
  say(line);
}

void RequestStage::printEvent(const AgentEvent& event) const {
  std::string line = "event " + encodeJson(event);
  if (event.is<AgentEvent::Error>() && view_ && view_->error()) line.append(", ").append(view_->error()->description);
  say(line);
}

}  // namespace corvane::demo
