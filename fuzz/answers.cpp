// Any bytes as the data of the page's answers while requests are pending: each request completes once, with its own
// answer and a value of its own type, or with the time-out.
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"
#include "fuzz/require.h"

namespace {

using namespace corvane;

/// What a request was completed with, of whatever type.
struct Outcome {
  std::optional<AgentError> error{};
  std::optional<bool> boolean{};
  std::optional<std::vector<std::string>> skus{};
  std::optional<CartQuantities> quantities{};
};

enum class Answer { nothing, boolean, skus, quantities };

/// A request and what has become of it.
struct Asked {
  Answer answer = Answer::nothing;
  std::vector<Outcome> outcomes;
};

class Host {
 public:
  Host() {
    post(R"("SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"})");
    post(R"("SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":2})");
    post(R"("SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"B","quantity":1})");
  }

  void ask(unsigned operation) {
    Asked& asked = *asked_.emplace_back(std::make_unique<Asked>());
    const auto finish = [this, &asked](Outcome outcome) {
      asked.outcomes.push_back(std::move(outcome));
      newest_ = &asked;
    };
    const auto done = [finish](std::optional<AgentError> error) { finish({.error = std::move(error)}); };
    const auto give = [finish](auto member) {
      return [finish, member](auto result) {
        Outcome outcome;
        if (result) {
          outcome.*member = *std::move(result);
        } else {
          outcome.error = std::move(result.error());
        }
        finish(std::move(outcome));
      };
    };
    switch (operation % 8) {
      case 0:
        return view_->updateProductInCart("A", 3, done);
      case 1:
        return view_->removeProductInCall("A", done);
      case 2:
        return view_->decrementProductInCart("A", done);
      case 3:
        asked.answer = Answer::boolean;
        return view_->isProductInCart("A", give(&Outcome::boolean));
      case 4:
        asked.answer = Answer::boolean;
        return view_->isProductInCall("A", give(&Outcome::boolean));
      case 5:
        asked.answer = Answer::skus;
        return view_->getProductsInCart(give(&Outcome::skus));
      case 6:
        asked.answer = Answer::skus;
        return view_->getProductsInCall(give(&Outcome::skus));
      default:
        asked.answer = Answer::quantities;
        return view_->getCartStatus(give(&Outcome::quantities));
    }
  }

  /// The page answers with this data; the checks are those of the request that it has been asked, if it is meant.
  void answer(std::string data, bool isMeant) {
    backend_->runLoop().runUntilIdle();
    const auto& pending = AgentViewAccess::parts(*view_).requests->sentCallbackActions();
    require(pending.size() <= 1);
    bool isNamed = false;
    if (isMeant && !pending.empty()) {
      constexpr std::string_view marker = "ID";
      const std::string id(pending.front()->callbackId().value());
      for (std::size_t place = 0; (place = data.find(marker, place)) != std::string::npos; place += id.size()) {
        data.replace(place, marker.size(), id);
        isNamed = true;
      }
    }
    const std::size_t before = outcomeCount();
    // The type stands last, so that the data cannot bring another one.
    const std::string message = R"({"data":)" + data + R"(,"eventType":"SDK_INTERNAL_GET_PRODUCTS_IN_CART_CALLBACK"})";
    engine()->postMessage(agentEventChannel, message);
    require(outcomeCount() <= before + (isNamed ? 1 : 0));
    if (outcomeCount() > before) checkOutcome(JsonValue::parse(message).value());
    // The answer comes twice; what is pending by now is another request.
    const std::size_t once = outcomeCount();
    engine()->postMessage(agentEventChannel, message);
    backend_->runLoop().runUntilIdle();
    engine()->postMessage(agentEventChannel, message);
    require(outcomeCount() == once);
  }

  /// Time passes until nobody waits any more.
  void end() {
    // A decrement asks twice.
    for (std::size_t limit = 2 * asked_.size(); limit > 0; --limit) {
      backend_->runLoop().advance(RequestChannel::answerLimit);
    }
    require(backend_->runLoop().pendingTaskCount() == 0);
    require(AgentViewAccess::parts(*view_).requests->sentCallbackActions().empty());
    for (const auto& asked : asked_) require(asked->outcomes.size() == 1);
  }

 private:
  headless::HeadlessWebEngine* engine() const { return headless::HeadlessWebEngine::of(*view_); }

  void post(std::string_view typeAndData) {
    engine()->postMessage(agentEventChannel, R"({"eventType":)" + std::string(typeAndData) + "}");
  }

  std::size_t outcomeCount() const {
    std::size_t count = 0;
    for (const auto& asked : asked_) count += asked->outcomes.size();
    return count;
  }

  /// The outcome that came last fits the message that brought it about.
  void checkOutcome(const JsonValue& message) const {
    require(newest_->outcomes.size() == 1);
    const Answer expectedAnswer = newest_->answer;
    const Outcome& outcome = newest_->outcomes.front();
    const JsonView data = message.find("data").value();
    const auto error = data.find("error");
    if (error && !error->isNull()) {
      const auto text = error->string();
      require(text && outcome.error == AgentError(AgentError::AgentToolError{std::string(*text)}));
      return;
    }
    const bool hasNoSku = outcome.error == AgentError(AgentError::SkuNotFound{});
    require(!outcome.error || (expectedAnswer == Answer::nothing && hasNoSku));
    const auto result = data.find("result");
    const auto skus = textsOf(result);
    require(outcome.boolean == (expectedAnswer == Answer::boolean && result ? result->boolean() : std::nullopt));
    require(outcome.skus == (expectedAnswer == Answer::skus ? skus : std::nullopt));
    if (expectedAnswer != Answer::quantities) return require(!outcome.quantities);
    require(outcome.quantities.has_value() == skus.has_value());
    if (!skus) return;
    CartQuantities expected;
    for (const auto& sku : *skus) {
      if (sku == "A") expected[sku] = 2;
      if (sku == "B") expected[sku] = 1;
    }
    require(*outcome.quantities == expected);
  }

  static std::optional<std::vector<std::string>> textsOf(const std::optional<JsonView>& list) {
    if (!list || !list->isArray()) return std::nullopt;
    std::vector<std::string> texts;
    for (const JsonView element : list->elements()) {
      const auto text = element.string();
      if (!text) return std::nullopt;
      texts.emplace_back(*text);
    }
    return texts;
  }

  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "organisation", false);
  /// Completions refer to them.
  std::vector<std::unique_ptr<Asked>> asked_;
  /// The last one that was completed.
  const Asked* newest_ = nullptr;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  // The first byte says how many requests there are and which of them are meant, the second which they are.
  const unsigned meant = data[0];
  const unsigned requestCount = 1 + meant % 3;
  const std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
  Host host;
  for (unsigned place = 0; place < requestCount; ++place) host.ask(data[1] + place * (data[1] >> 3U));
  for (unsigned place = 0; place < 4; ++place) host.answer(text, (meant >> (2 + place) & 1U) != 0);
  host.end();
  return 0;
}
