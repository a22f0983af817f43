// The operations of the agent view that ask something of the page: each is one action record.
#include <utility>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/bridge/action_records.h"
#include "corvane/platform/foundation/uuid.h"

namespace corvane {

namespace {

template <class Record, class Data, class Completion>
void request(RequestChannel& requests, Action action, Data data, Completion completion) {
  requests.submit(std::make_shared<Record>(std::move(data), std::move(completion), action));
}

RequestId newRequest() { return {._id = makeUuid()}; }

SkuData newRequest(std::string sku, std::optional<std::int64_t> quantity = std::nullopt) {
  return {._id = makeUuid(), .sku = std::move(sku), .quantity = quantity};
}

}  // namespace

void VelnorAgentView::addProductToCall(Product product, AgentErrorCompletion completion) {
  request<AddProductAction>(*parts_->requests, Action::addProductToCall,
                            ProductActionData{.data = std::move(product), ._id = makeUuid()}, std::move(completion));
}

void VelnorAgentView::getProductsInCall(SkuListCompletion completion) {
  request<GetProductAction>(*parts_->requests, Action::getProductsInCall, newRequest(), std::move(completion));
}

void VelnorAgentView::isProductInCall(std::string sku, BooleanCompletion completion) {
  request<SkuBoolResponseAction>(*parts_->requests, Action::isProductInCall, newRequest(std::move(sku)),
                                 std::move(completion));
}

void VelnorAgentView::removeProductInCall(std::string sku, AgentErrorCompletion completion) {
  request<SkuAction>(*parts_->requests, Action::removeProductInCall, newRequest(std::move(sku)), std::move(completion));
}

void VelnorAgentView::addProductToCart(std::string sku, AgentErrorCompletion completion) {
  request<SkuAction>(*parts_->requests, Action::addProductToCart, newRequest(std::move(sku)), std::move(completion));
}

void VelnorAgentView::updateProductInCart(std::string sku, std::int64_t quantity, AgentErrorCompletion completion) {
  request<SkuAction>(*parts_->requests, Action::updateProductInCart, newRequest(std::move(sku), quantity),
                     std::move(completion));
}

void VelnorAgentView::getProductsInCart(SkuListCompletion completion) {
  request<GetProductAction>(*parts_->requests, Action::getProductsInCart, newRequest(), std::move(completion));
}

void VelnorAgentView::getCartStatus(CartStatusCompletion completion) {
  request<GetCartStatusAction>(*parts_->requests, Action::getProductsInCart, newRequest(), std::move(completion));
}

void VelnorAgentView::isProductInCart(std::string sku, BooleanCompletion completion) {
  request<SkuBoolResponseAction>(*parts_->requests, Action::isProductInCart, newRequest(std::move(sku)),
                                 std::move(completion));
}

void VelnorAgentView::removeProductInCart(std::string sku, AgentErrorCompletion completion) {
  request<SkuAction>(*parts_->requests, Action::removeProductInCart, newRequest(std::move(sku)), std::move(completion));
}

void VelnorAgentView::decrementProductInCart(std::string sku, AgentErrorCompletion completion) {
  const auto view = std::static_pointer_cast<VelnorAgentView>(weak_from_this().lock());
  if (view == nullptr) {
    // A view that is ending has no call any more.
    if (completion) completion(AgentError::NoActiveCall{});
    return;
  }
  getCartStatus(
      [view, sku = std::move(sku), completion = std::move(completion)](AgentResult<CartQuantities> status) mutable {
        const auto finish = [&](AgentError error) {
          if (completion) completion(std::move(error));
        };
        if (!status) return finish(std::move(status.error()));
        std::int64_t quantity = 0;
        if (*status) {
          if (const auto line = (*status)->find(sku); line != (*status)->end()) quantity = line->second;
        }
        if (quantity <= 0) return finish(AgentError::SkuNotFound{});
        view->updateProductInCart(std::move(sku), quantity - 1, std::move(completion));
      });
}

void VelnorAgentView::refreshSsoToken(std::string ssoToken, std::string responseId) {
  parts_->requests->submit(std::make_shared<SSOAction>(
      SSOActionFields{.data = {.idToken = std::move(ssoToken), .responseId = std::move(responseId)}}));
}

void VelnorAgentView::signOut() { parts_->requests->submit(std::make_shared<VoidAction>(Action::ssoLogout)); }

void VelnorAgentView::maximizeView() {
  if (isMinimized()) parts_->requests->submit(std::make_shared<VoidAction>(Action::maximize));
}

}  // namespace corvane
