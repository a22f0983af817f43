/// A view in a running call with a simulated page, and a transcript of what is asked there.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"
#include "corvane/simulation/simulated_agent_tool.h"
#include "demo/shop/outcome_text.h"

namespace corvane::demo {

/// Prints one line for each event and each completion, with the virtual time since the stage was made. Compares the
/// completions with what was expected.
///
/// Ownership: owned by its maker; it installs a backend of its own, so there is one stage at a time.
/// Threads:   main thread only.
class RequestStage : public std::enable_shared_from_this<RequestStage> {
 public:
  using Duration = std::chrono::milliseconds;

  [[nodiscard]] static std::shared_ptr<RequestStage> create();
  RequestStage(const RequestStage&) = delete;
  RequestStage& operator=(const RequestStage&) = delete;
  ~RequestStage();

  [[nodiscard]] VelnorAgentView& view() { return *view_; }
  [[nodiscard]] simulation::SimulatedAgentTool& page() { return *page_; }

  /// A completion for any operation. It must be called once, with this outcome, at this time.
  [[nodiscard]] auto expect(std::string request, std::string outcome, Duration time) {
    const std::size_t step = addStep(std::move(request), std::move(outcome), time);
    return [weak = weak_from_this(), step](const auto& actual) {
      if (const auto self = weak.lock()) self->complete(step, outcomeText(actual));
    };
  }
  /// The same, for a completion that is due now, as far as time goes.
  [[nodiscard]] auto expect(std::string request, std::string outcome) {
    return expect(std::move(request), std::move(outcome), now());
  }
  /// A completion that must never be called.
  [[nodiscard]] auto expectNothing(std::string request) { return expect(std::move(request), std::string(never), {}); }

  void say(std::string_view line) const;
  /// Says what is to be seen, and whether that is so.
  void check(bool isTrue, std::string_view line);
  void advance(Duration time) { backend_->runLoop().advance(time); }
  /// Lets everything happen that takes no time.
  void settle() { backend_->runLoop().runUntilIdle(); }
  [[nodiscard]] bool areAllComplete() const;
  void dropView();
  /// Waits for what may still come. Whether everything was as expected.
  [[nodiscard]] bool finish();

 private:
  static constexpr std::string_view never = "never completed";
  struct Step {
    std::string request;
    std::string expectedOutcome;
    Duration expectedTime;
    int completions = 0;
  };

  RequestStage();
  [[nodiscard]] Duration now() const;
  std::size_t addStep(std::string request, std::string outcome, Duration time);
  void complete(std::size_t index, const std::string& outcome);
  void printEvent(const AgentEvent& event) const;

  std::unique_ptr<headless::Backend> backend_;
  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<simulation::SimulatedAgentTool> page_;
  std::vector<Step> steps_;
  bool isAsExpected_ = true;
};

}  // namespace corvane::demo
