/// The product and cart operations of whoever holds an agent view.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "corvane/bridge/completion.h"
#include "corvane/export.h"
#include "corvane/product/product.h"

namespace corvane {

class VelnorAgentView;

/// Hands each operation to the view that is held, unchanged; see `VelnorAgentView` for what they do. While none is
/// held they do nothing, and their completions are never called.
class CORVANE_EXPORT ForwardedOperations {
 public:
  void addProductToCall(Product product, AgentErrorCompletion completion) const;
  void getProductsInCall(SkuListCompletion completion) const;
  void isProductInCall(std::string sku, BooleanCompletion completion) const;
  void removeProductInCall(std::string sku, AgentErrorCompletion completion) const;
  void addProductToCart(std::string sku, AgentErrorCompletion completion) const;
  void updateProductInCart(std::string sku, std::int64_t quantity, AgentErrorCompletion completion) const;
  void getProductsInCart(SkuListCompletion completion) const;
  void getCartStatus(CartStatusCompletion completion) const;
  void isProductInCart(std::string sku, BooleanCompletion completion) const;
  void removeProductInCart(std::string sku, AgentErrorCompletion completion) const;
  void decrementProductInCart(std::string sku, AgentErrorCompletion completion) const;

 protected:
  ~ForwardedOperations() = default;

 private:
  [[nodiscard]] virtual std::shared_ptr<VelnorAgentView> operatedView() const = 0;
  template <class... Parameters, class... Arguments>
  CORVANE_HIDDEN void forward(void (VelnorAgentView::*operation)(Parameters...), Arguments&&... arguments) const;
};

}  // namespace corvane
