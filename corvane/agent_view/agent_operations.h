/// The product and cart operations, of an agent view and of whoever holds one.
#pragma once

#include <cstdint>
#include <string>

#include "corvane/bridge/completion.h"
#include "corvane/export.h"
#include "corvane/product/product.h"

namespace corvane {

class RequestChannel;

/// What the host app can ask of the page during a call.
///
/// Each operation returns at once. As long as the agent view lives it calls its completion exactly once: inside the
/// call where the request is refused, else later. Where there is no agent view, as in a holder that holds none, nothing
/// happens and the completion is never called.
///
/// Requests wait in a queue. The page is asked one at a time, in the order of the calls, and has five seconds to answer
/// each (`RequestTimeout` after that). An answer of the page that makes no sense completes the request without a value.
///
/// All are refused with `NoActiveCall` unless the call is `running`. An error of the page comes as `AgentToolError`
/// with the page's own text. A SKU is passed on as it is; the page never sees one that is not valid UTF-8, so that such
/// a request times out.
///
/// Ownership: a base of those that offer the operations; never owned by itself.
/// Threads:   main thread only; completions are called there.
/// Failure:   an `AgentError` handed to the completion; nothing is thrown.
class CORVANE_EXPORT AgentOperations {
 public:
  AgentOperations(const AgentOperations&) = delete;
  AgentOperations& operator=(const AgentOperations&) = delete;

  /// Shows a product in the call. A product that has no JSON form is refused with `EncodingError`.
  void addProductToCall(Product product, AgentErrorCompletion completion);
  /// The SKUs of the products in the call, in the page's order.
  void getProductsInCall(SkuListCompletion completion);
  void isProductInCall(std::string sku, BooleanCompletion completion);
  void removeProductInCall(std::string sku, AgentErrorCompletion completion);
  void addProductToCart(std::string sku, AgentErrorCompletion completion);
  /// The quantity is passed on as it is; what one below 1 means is the page's business.
  void updateProductInCart(std::string sku, std::int64_t quantity, AgentErrorCompletion completion);
  /// The SKUs in the customer's cart, in the page's order.
  void getProductsInCart(SkuListCompletion completion);
  /// The quantities of the cart's SKUs that the page lists, as the page's events have told them so far.
  void getCartStatus(CartStatusCompletion completion);
  void isProductInCart(std::string sku, BooleanCompletion completion);
  void removeProductInCart(std::string sku, AgentErrorCompletion completion);
  /// Lowers the quantity by one; at 1 the product leaves the cart. `SkuNotFound` where the cart has none of it. Keeps
  /// the view until the page has answered.
  void decrementProductInCart(std::string sku, AgentErrorCompletion completion);

 protected:
  AgentOperations() = default;
  ~AgentOperations() = default;

 private:
  /// Where the requests go; null where there is no agent view.
  [[nodiscard]] virtual RequestChannel* requestChannel() const = 0;
};

}  // namespace corvane
