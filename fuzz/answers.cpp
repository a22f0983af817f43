// Any bytes as the data of the page's answers while requests are pending: each request completes once. It gets its own
// answer as a value of its own type, or the time-out.
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"
#include "fuzz/require.h"
#include "tests/support/outcome_text.h"

namespace {

using namespace corvane;

/// What answers may come to: whatever is no value of a request's type is no value at all.
enum class Answer { nothing, boolean, skus, quantities };

struct Request {
  Answer answer = Answer::nothing;
  std::vector<std::string> outcomes;
};

class Host {
 public:
  Host() {
    post(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
    post(R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":2}})");
  }

  void ask(unsigned operation) {
    Request& request = requests_.emplace_back();
    const auto note = [this, &request](const auto& outcome) {
      request.outcomes.push_back(outcomeText(outcome));
      newest_ = &request;
    };
    switch (operation % 5) {
      case 0:
        return view_->updateProductInCart("A", 3, note);
      case 1:
        return view_->decrementProductInCart("A", note);
      case 2:
        request.answer = Answer::boolean;
        return view_->isProductInCart("A", note);
      case 3:
        request.answer = Answer::skus;
        return view_->getProductsInCart(note);
      default:
        request.answer = Answer::quantities;
        return view_->getCartStatus(note);
    }
  }

  /// The page answers with this data, of which "ID" means the request that it has been asked.
  void answer(std::string data) {
    backend_->runLoop().runUntilIdle();
    const auto& pending = AgentViewAccess::parts(*view_).requests->sentCallbackActions();
    require(pending.size() <= 1);
    const std::size_t place = data.find("ID");
    if (!pending.empty() && place != std::string::npos) data.replace(place, 2, *pending.front()->callbackId());
    const std::size_t before = outcomeCount();
    // The type stands last, so that the data cannot bring another one.
    const std::string message = R"({"data":)" + data + R"(,"eventType":"SDK_INTERNAL_GET_PRODUCTS_IN_CART_CALLBACK"})";
    post(message);
    const std::size_t after = outcomeCount();
    require(after <= before + 1);
    if (after > before) checkOutcome(message);
    // It comes twice; what is pending by now is another request.
    backend_->runLoop().runUntilIdle();
    post(message);
    require(outcomeCount() == after);
  }

  /// Time passes until nobody waits any more. A decrement asks twice.
  void end() {
    for (std::size_t limit = 2 * requests_.size(); limit > 0; --limit) {
      backend_->runLoop().advance(RequestChannel::answerLimit);
    }
    require(backend_->runLoop().pendingTaskCount() == 0);
    for (const Request& request : requests_) require(request.outcomes.size() == 1);
  }

 private:
  void post(std::string_view message) {
    headless::HeadlessWebEngine::of(*view_)->postMessage(agentEventChannel, message);
  }
  std::size_t outcomeCount() const {
    std::size_t count = 0;
    for (const Request& request : requests_) count += request.outcomes.size();
    return count;
  }
  void checkOutcome(std::string_view message) const {
    const std::string& outcome = newest_->outcomes.front();
    // Numbers beyond its own are fine for the library.
    const auto read = nlohmann::json::parse(message, nullptr, /*allow_exceptions=*/false);
    if (read.is_discarded()) return;
    const auto& data = read["data"];
    if (data.contains("error") && !data["error"].is_null()) return require(outcome.starts_with("error "));
    const auto result = data.value("result", nlohmann::json());
    const bool isBoolean = newest_->answer == Answer::boolean && result.is_boolean();
    if (isBoolean) return require(outcome == result.dump());
    const bool isList =
        result.is_array() && std::ranges::all_of(result, [](const auto& sku) { return sku.is_string(); });
    if (newest_->answer == Answer::nothing) return require(outcome == "success" || outcome == "error skuNotFound");
    if (newest_->answer == Answer::boolean || !isList) return require(outcome == "nothing");
    if (newest_->answer == Answer::skus) return require(outcome == result.dump());
    require(outcome == (std::ranges::count(result, "A") > 0 ? R"({"A":2})" : "{}"));
  }

  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "organisation", false);
  /// Completions refer to them.
  std::deque<Request> requests_;
  /// The last one that was completed.
  const Request* newest_ = nullptr;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  // The first byte says how many requests there are, the second which.
  const unsigned count = 1 + data[0] % 3;
  const std::string text(reinterpret_cast<const char*>(data) + 2, size - 2);
  Host host;
  for (unsigned request = 0; request < count; ++request) host.ask(data[1] + request * (data[1] >> 3U));
  for (int time = 0; time < 4; ++time) host.answer(text);
  host.end();
  return 0;
}
