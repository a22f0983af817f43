/// What the buttons of the host app ask of the page.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "corvane/agent_view/velnor_agent_view.h"
#include "demo/shop/shop_cart.h"

namespace corvane::demo {

/// Makes the requests and reports how each of them ended, as one line of text.
///
/// Ownership: shared by whoever makes requests; it keeps the view. Threads: main thread only.
/// Failure:   is reported like everything else; nothing is thrown.
class ShopRequests {
 public:
  using Report = std::function<void(const std::string& line)>;

  ShopRequests(std::shared_ptr<VelnorAgentView> view, Report report);

  void addToCall(const Product& product);
  void addToCart(const std::string& sku);
  void setQuantity(const std::string& sku, std::int64_t quantity);
  void decrement(const std::string& sku);
  void removeFromCart(const std::string& sku);
  void askIfInCart(const std::string& sku);
  void listProductsInCall();
  void listProductsInCart();
  void listCartStatus();
  /// Hands over a new token, as the page wants one now and then.
  void refreshToken(const std::string& responseId);
  void signOut();

 private:
  /// A completion for any request, which reports how it ended.
  [[nodiscard]] auto reportAs(std::string request) const;

  std::shared_ptr<VelnorAgentView> view_;
  Report report_;
};

}  // namespace corvane::demo
