// Any bytes as the data of the page's answers while requests are pending: each request completes once, with its own
// answer or with the time-out.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"

namespace {

using namespace corvane;

void require(bool condition) {
  if (!condition) std::abort();
}

class Host {
 public:
  Host() {
    post(R"("SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"})");
    post(R"("SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":2})");
    post(R"("SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"B","quantity":1})");
  }

  void ask(unsigned operation) {
    int& count = *outcomeCounts_.emplace_back(std::make_unique<int>(0));
    const auto done = [&count](const auto&) { ++count; };
    switch (operation % 8) {
      case 0:
        return view_->updateProductInCart("A", 3, done);
      case 1:
        return view_->removeProductInCall("A", done);
      case 2:
        return view_->decrementProductInCart("A", done);
      case 3:
        return view_->isProductInCart("A", done);
      case 4:
        return view_->isProductInCall("A", done);
      case 5:
        return view_->getProductsInCart(done);
      case 6:
        return view_->getProductsInCall(done);
      default:
        return view_->getCartStatus(done);
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
    const int before = outcomeCount();
    // The type stands last, so that the data cannot bring another one.
    const std::string message = R"({"data":)" + data + R"(,"eventType":"SDK_INTERNAL_GET_PRODUCTS_IN_CART_CALLBACK"})";
    engine()->postMessage(agentEventChannel, message);
    require(outcomeCount() <= before + (isNamed ? 1 : 0));
    // The answer comes twice; what is pending by now is another request.
    const int once = outcomeCount();
    engine()->postMessage(agentEventChannel, message);
    backend_->runLoop().runUntilIdle();
    engine()->postMessage(agentEventChannel, message);
    require(outcomeCount() == once);
  }

  /// Time passes until nobody waits any more.
  void end() {
    // A decrement asks twice.
    for (std::size_t limit = 2 * outcomeCounts_.size(); limit > 0; --limit) {
      backend_->runLoop().advance(RequestChannel::answerLimit);
    }
    require(backend_->runLoop().pendingTaskCount() == 0);
    require(AgentViewAccess::parts(*view_).requests->sentCallbackActions().empty());
    for (const auto& count : outcomeCounts_) require(*count == 1);
  }

 private:
  headless::HeadlessWebEngine* engine() const { return headless::HeadlessWebEngine::of(*view_); }

  void post(std::string_view typeAndData) {
    engine()->postMessage(agentEventChannel, R"({"eventType":)" + std::string(typeAndData) + "}");
  }

  int outcomeCount() const {
    int sum = 0;
    for (const auto& count : outcomeCounts_) sum += *count;
    return sum;
  }

  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install();
  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "organisation", false);
  /// One for each request; completions refer to them.
  std::vector<std::unique_ptr<int>> outcomeCounts_;
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
