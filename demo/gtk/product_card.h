/// One product of the host app, with the buttons for what can be done with it in a call.
#pragma once

#include <memory>
#include <string>

#include "corvane/product/product.h"
#include "demo/gtk/widgets.h"
#include "demo/shop/shop_cart.h"
#include "demo/shop/shop_requests.h"

namespace corvane::demo {

/// Its buttons work as long as the requests live.
///
/// Ownership: owned by the screen that shows its widget. Threads: main thread only.
class ProductCard {
 public:
  ProductCard(const Product& product, const std::shared_ptr<ShopRequests>& requests,
              std::shared_ptr<const ShopCart> cart);

  [[nodiscard]] GtkWidget* widget() const { return card_.get(); }
  /// Shows how many of it are in the cart now.
  void showQuantity();

 private:
  std::string sku_;
  std::shared_ptr<const ShopCart> cart_;
  WidgetHandle card_;
  WidgetHandle quantity_;
};

}  // namespace corvane::demo
