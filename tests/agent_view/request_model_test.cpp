// Random histories of requests against a model that knows them beforehand.
#include <nlohmann/json.hpp>
#include <random>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using Time = std::chrono::microseconds;
using Json = nlohmann::json;

/// What the page does with one request.
struct Treatment {
  std::optional<Time> answerDelay;
  bool scriptFails = false;
  bool answersTwice = false;
  std::optional<std::string> error;
};

enum class Step { request, reload, callBegins, callPauses };

struct History {
  std::vector<std::pair<Time, Step>> steps;
  std::optional<Time> release;
  std::vector<Treatment> treatments;  ///< of the requests in their order
};

struct Outcome {
  std::size_t request;
  std::string what;
  Time time;
  bool operator==(const Outcome&) const = default;
};
void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << outcome.request << " " << outcome.what << " at " << outcome.time.count() << " us";
}

History makeHistory(unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](int limit) { return std::uniform_int_distribution(0, limit - 1)(random); };
  History history;
  Time time{0};
  history.steps.emplace_back(time, Step::callBegins);
  const int stepCount = 5 + below(60);
  for (int index = 0; index < stepCount; ++index) {
    time += Time(1 + below(below(3) == 0 ? 3'000'000 : 2'000));
    constexpr std::array rareSteps{Step::reload, Step::callPauses, Step::callBegins};
    const auto kind = static_cast<std::size_t>(below(20));
    const Step step = kind < rareSteps.size() ? rareSteps[kind] : Step::request;
    history.steps.emplace_back(time, step);
    if (step != Step::request) continue;
    Treatment& treatment = history.treatments.emplace_back();
    if (below(8) != 0) treatment.answerDelay = Time(below(3) == 0 ? below(6'000'000) : below(5'000));
    treatment.scriptFails = below(12) == 0;
    treatment.answersTwice = below(4) == 0;
    if (below(4) == 0) treatment.error = "error " + std::to_string(index);
  }
  if (below(3) == 0) history.release = time + Time(1 + below(4'000'000));
  return history;
}

/// What must come of a history, and in which order.
std::vector<Outcome> expectedOutcomes(const History& history) {
  std::vector<Outcome> outcomes;
  std::vector<Time> reloads;
  for (const auto& [time, step] : history.steps) {
    if (step == Step::reload) reloads.push_back(time);
  }
  bool isCallActive = false;
  std::size_t request = 0;
  Time slotIsFreeAt{0};
  Time lastPost{0};
  for (const auto& [time, step] : history.steps) {
    if (step == Step::callBegins) isCallActive = true;
    if (step == Step::callPauses || step == Step::reload) isCallActive = false;
    if (step != Step::request) continue;
    const std::size_t index = request++;
    if (!isCallActive) {
      outcomes.push_back({index, "noActiveCall", time});
      continue;
    }
    const Treatment& treatment = history.treatments[index];
    const Time post = lastPost = std::max(time, slotIsFreeAt);
    const Time answer = post + treatment.answerDelay.value_or(1h);
    const bool isLost = treatment.scriptFails ||
                        std::ranges::any_of(reloads, [&](Time reload) { return reload > post && reload <= answer; });
    const bool isAnswered = !isLost && answer < post + 5s;
    slotIsFreeAt = isAnswered ? answer : post + 5s;
    outcomes.push_back({index, !isAnswered ? "requestTimeout" : treatment.error.value_or("yes"), slotIsFreeAt});
  }
  // A view without holders goes on until nobody waits any more.
  if (history.release) {
    const Time end = std::max(*history.release, lastPost);
    std::erase_if(outcomes, [&](const Outcome& outcome) { return outcome.time > end; });
  }
  std::ranges::sort(outcomes, {}, [](const Outcome& outcome) { return std::pair(outcome.time, outcome.request); });
  return outcomes;
}

/// A view, and a page that treats its requests as a history has it.
class Player {
 public:
  explicit Player(headless::VirtualRunLoop& loop) : loop_(loop) {
    engine().setEvaluator([this](std::string_view script) { return receive(script); });
  }

  std::vector<Outcome> play(const History& history) {
    treatments_ = history.treatments;
    for (const auto& [time, step] : history.steps) {
      loop_.schedule(time, [this, step] { take(step); });
    }
    if (history.release) loop_.schedule(*history.release, [this] { view_.reset(); });
    loop_.advance(1h);
    return outcomes_;
  }
  /// The requests that the page got, in order.
  [[nodiscard]] const std::vector<std::size_t>& posted() const { return posted_; }
  [[nodiscard]] bool isWaiting() const {
    return view_ != nullptr && !AgentViewAccess::parts(*view_).requests->sentCallbackActions().empty();
  }

 private:
  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::custom("http://h/"), "o", false);
  /// A view without holders may have more to post.
  std::weak_ptr<VelnorAgentView> weakView_ = view_;

  headless::HeadlessWebEngine& engine() { return *headless::HeadlessWebEngine::of(*view_); }
  [[nodiscard]] Time now() const { return std::chrono::duration_cast<Time>(loop_.now() - begin_); }

  void take(Step step) {
    switch (step) {
      case Step::request: {
        const std::size_t index = requestCount_++;
        return view_->isProductInCart(std::to_string(index), [this, index](const AgentResult<bool>& result) {
          outcomes_.push_back({index, result ? "yes" : result.error().what(), now()});
        });
      }
      case Step::reload:
        ++page_;
        return view_->loadBooking("b");
      case Step::callBegins:
        return post(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
      case Step::callPauses:
        return post(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_PAUSED"}})");
    }
  }
  void post(std::string_view message) { engine().postMessage(agentEventChannel, message); }

  /// The page gets an action.
  EvaluationResult receive(std::string_view script) {
    const Json action = Json::parse(script.substr(11, script.size() - 13));
    const std::size_t index = std::stoul(action["data"]["sku"].get<std::string>());
    posted_.push_back(index);
    const Treatment& treatment = treatments_.at(index);
    if (treatment.scriptFails) return std::unexpected(WebError{.description = "thrown"});
    Json answer{{"eventType", "SDK_INTERNAL_IS_PRODUCT_IN_CART_CALLBACK"},
                {"data", {{"_id", action["data"]["_id"]}, {"result", true}}}};
    if (treatment.error) answer["data"]["error"] = *treatment.error;
    if (!treatment.answerDelay) return JsonValue();
    for (int time = 0; time < (treatment.answersTwice ? 2 : 1); ++time) {
      loop_.schedule(*treatment.answerDelay, [this, page = page_, text = answer.dump(), weak = weakView_] {
        const auto alive = weak.lock();
        if (alive == nullptr || page != page_) return;
        headless::HeadlessWebEngine::of(*alive)->postMessage(agentEventChannel, text);
      });
    }
    return JsonValue();
  }

  headless::VirtualRunLoop& loop_;
  RunLoop::Time begin_ = loop_.now();
  std::vector<Treatment> treatments_;
  std::vector<Outcome> outcomes_;
  std::vector<std::size_t> posted_;
  std::size_t requestCount_ = 0;
  int page_ = 0;
};

class RequestModelTest : public HeadlessTest {};

TEST_F(RequestModelTest, HistoriesEndAsTheModelSays) {
  for (unsigned seed = 0; seed < 500; ++seed) {
    const History history = makeHistory(seed);
    Player player(loop());
    ASSERT_EQ(player.play(history), expectedOutcomes(history)) << "seed " << seed;
    EXPECT_TRUE(std::ranges::is_sorted(player.posted())) << "admitted in the order of the calls; seed " << seed;
    EXPECT_FALSE(player.isWaiting()) << "seed " << seed;
  }
}

}  // namespace
}  // namespace corvane
