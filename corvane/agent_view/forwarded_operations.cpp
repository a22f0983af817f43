#include "corvane/agent_view/forwarded_operations.h"

#include <utility>

#include "corvane/agent_view/velnor_agent_view.h"

namespace corvane {

template <class... Parameters, class... Arguments>
void ForwardedOperations::forward(void (VelnorAgentView::*operation)(Parameters...), Arguments&&... arguments) const {
  if (const auto view = operatedView()) ((*view).*operation)(std::forward<Arguments>(arguments)...);
}

void ForwardedOperations::addProductToCall(Product product, AgentErrorCompletion completion) const {
  forward(&VelnorAgentView::addProductToCall, std::move(product), std::move(completion));
}
void ForwardedOperations::getProductsInCall(SkuListCompletion completion) const {
  forward(&VelnorAgentView::getProductsInCall, std::move(completion));
}
void ForwardedOperations::isProductInCall(std::string sku, BooleanCompletion completion) const {
  forward(&VelnorAgentView::isProductInCall, std::move(sku), std::move(completion));
}
void ForwardedOperations::removeProductInCall(std::string sku, AgentErrorCompletion completion) const {
  forward(&VelnorAgentView::removeProductInCall, std::move(sku), std::move(completion));
}
void ForwardedOperations::addProductToCart(std::string sku, AgentErrorCompletion completion) const {
  forward(&VelnorAgentView::addProductToCart, std::move(sku), std::move(completion));
}
void ForwardedOperations::updateProductInCart(std::string sku, std::int64_t quantity,
                                              AgentErrorCompletion completion) const {
  forward(&VelnorAgentView::updateProductInCart, std::move(sku), quantity, std::move(completion));
}
void ForwardedOperations::getProductsInCart(SkuListCompletion completion) const {
  forward(&VelnorAgentView::getProductsInCart, std::move(completion));
}
void ForwardedOperations::getCartStatus(CartStatusCompletion completion) const {
  forward(&VelnorAgentView::getCartStatus, std::move(completion));
}
void ForwardedOperations::isProductInCart(std::string sku, BooleanCompletion completion) const {
  forward(&VelnorAgentView::isProductInCart, std::move(sku), std::move(completion));
}
void ForwardedOperations::removeProductInCart(std::string sku, AgentErrorCompletion completion) const {
  forward(&VelnorAgentView::removeProductInCart, std::move(sku), std::move(completion));
}
void ForwardedOperations::decrementProductInCart(std::string sku, AgentErrorCompletion completion) const {
  forward(&VelnorAgentView::decrementProductInCart, std::move(sku), std::move(completion));
}

}  // namespace corvane
