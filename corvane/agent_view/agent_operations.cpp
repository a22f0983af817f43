// Each operation is one action record.
#include "corvane/agent_view/agent_operations.h"

#include <optional>
#include <source_location>
#include <utility>

#include "corvane/agent_view/request_channel.h"
#include "corvane/bridge/action_records.h"
#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/uuid.h"

namespace corvane {

namespace {

template <class Record, class Data, class Completion>
void request(RequestChannel* channel, Action action, Data data, Completion completion,
             std::source_location door = std::source_location::current()) {
  assertMainThread(door);
  if (channel != nullptr) {
    return channel->submit(std::make_shared<Record>(std::move(data), std::move(completion), action));
  }
  diagnose(Diagnostic::Kind::requestDropped, [&] {
    return std::string(rawValue(action)) + ": no agent view is held here, so the completion is never called";
  });
}

RequestId newRequest() { return {._id = makeUuid()}; }

SkuData newRequest(std::string sku, std::optional<std::int64_t> quantity = std::nullopt) {
  return {._id = makeUuid(), .sku = std::move(sku), .quantity = quantity};
}

void requestUpdate(RequestChannel* channel, std::string sku, std::int64_t quantity, AgentErrorCompletion completion,
                   std::source_location door = std::source_location::current()) {
  request<SkuAction>(channel, Action::updateProductInCart, newRequest(std::move(sku), quantity), std::move(completion),
                     door);
}

}  // namespace

void AgentOperations::addProductToCall(Product product, AgentErrorCompletion completion) {
  request<AddProductAction>(requestChannel(), Action::addProductToCall,
                            ProductActionData{.data = std::move(product), ._id = makeUuid()}, std::move(completion));
}

void AgentOperations::getProductsInCall(SkuListCompletion completion) {
  request<GetProductAction>(requestChannel(), Action::getProductsInCall, newRequest(), std::move(completion));
}

void AgentOperations::isProductInCall(std::string sku, BooleanCompletion completion) {
  request<SkuBoolResponseAction>(requestChannel(), Action::isProductInCall, newRequest(std::move(sku)),
                                 std::move(completion));
}

void AgentOperations::removeProductInCall(std::string sku, AgentErrorCompletion completion) {
  request<SkuAction>(requestChannel(), Action::removeProductInCall, newRequest(std::move(sku)), std::move(completion));
}

void AgentOperations::addProductToCart(std::string sku, AgentErrorCompletion completion) {
  request<SkuAction>(requestChannel(), Action::addProductToCart, newRequest(std::move(sku)), std::move(completion));
}

void AgentOperations::updateProductInCart(std::string sku, std::int64_t quantity, AgentErrorCompletion completion) {
  requestUpdate(requestChannel(), std::move(sku), quantity, std::move(completion));
}

void AgentOperations::getProductsInCart(SkuListCompletion completion) {
  request<GetProductAction>(requestChannel(), Action::getProductsInCart, newRequest(), std::move(completion));
}

void AgentOperations::getCartStatus(CartStatusCompletion completion) {
  request<GetCartStatusAction>(requestChannel(), Action::getProductsInCart, newRequest(), std::move(completion));
}

void AgentOperations::isProductInCart(std::string sku, BooleanCompletion completion) {
  request<SkuBoolResponseAction>(requestChannel(), Action::isProductInCart, newRequest(std::move(sku)),
                                 std::move(completion));
}

void AgentOperations::removeProductInCart(std::string sku, AgentErrorCompletion completion) {
  request<SkuAction>(requestChannel(), Action::removeProductInCart, newRequest(std::move(sku)), std::move(completion));
}

void AgentOperations::decrementProductInCart(std::string sku, AgentErrorCompletion completion) {
  assertMainThread();
  RequestChannel* const channel = requestChannel();
  if (channel == nullptr) return;
  // The update goes to the view that the status was asked of, whatever a holder holds by then.
  auto update = [channel = channel->shared_from_this(), view = channel->delegate(), sku = std::move(sku),
                 completion = std::move(completion)](AgentResult<CartQuantities> status) mutable {
    const auto finish = [&](AgentError error) {
      if (completion) completion(std::move(error));
    };
    if (!status) return finish(std::move(status.error()));
    std::int64_t quantity = 0;
    if (*status) {
      if (const auto item = (*status)->find(sku); item != (*status)->end()) quantity = item->second;
    }
    if (quantity <= 0) return finish(AgentError::SkuNotFound{});
    requestUpdate(channel.get(), std::move(sku), quantity - 1, std::move(completion));
  };
  request<GetCartStatusAction>(channel, Action::getProductsInCart, newRequest(),
                               CartStatusCompletion(std::move(update)));
}

}  // namespace corvane
