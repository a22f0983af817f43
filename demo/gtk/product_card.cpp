#include "demo/gtk/product_card.h"

#include <array>
#include <cstdio>
#include <utility>

#include "corvane/platform/foundation/while_alive.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

std::string priceText(const Price& price) {
  std::array<char, 32> amount{};
  std::snprintf(amount.data(), amount.size(), " %.2f", static_cast<double>(price.current()));
  return price.currency() + amount.data();
}

}  // namespace

ProductCard::ProductCard(const Product& product, const std::shared_ptr<ShopRequests>& requests,
                         std::shared_ptr<const ShopCart> cart)
    : sku_(firstShown(product).sku()),
      cart_(std::move(cart)),
      card_(keep(makeColumn(8, "card"))),
      quantity_(keep(makeLabel("", "quantity"))) {
  const auto button = [&](const char* text, const auto& press) {
    return makeButton(text, whileAlive(std::weak_ptr(requests), press));
  };
  GtkWidget* const head = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 8);
  GtkWidget* const names = makeColumn(2, "names");
  gtk_widget_set_hexpand(names, TRUE);
  append(names, makeLabel(product.name().value_or(sku_), "name"));
  append(names, makeLabel(priceText(firstShown(product).price()) + " · " + sku_, "soft"));
  append(head, names);
  gtk_widget_set_valign(quantity_.get(), GTK_ALIGN_CENTER);
  append(head, quantity_.get());

  GtkWidget* const adding = makeRow();
  append(adding, button("Add to call", [product](ShopRequests& shop) { shop.addToCall(product); }));
  append(adding, button("Add to cart", [sku = sku_](ShopRequests& shop) { shop.addToCart(sku); }));
  append(adding, button("In the cart?", [sku = sku_](ShopRequests& shop) { shop.askIfInCart(sku); }));

  GtkWidget* const changing = makeRow();
  const auto change = [this](int difference) {
    return [sku = sku_, known = cart_, difference](ShopRequests& shop) {
      shop.setQuantity(sku, known->quantityOf(sku) + difference);
    };
  };
  append(changing, button("−", change(-1)));
  append(changing, button("+", change(+1)));
  append(changing, button("One less", [sku = sku_](ShopRequests& shop) { shop.decrement(sku); }));
  append(changing, button("Remove", [sku = sku_](ShopRequests& shop) { shop.removeFromCart(sku); }));

  append(widget(), head);
  append(widget(), adding);
  append(widget(), changing);
  showQuantity();
}

void ProductCard::showQuantity() {
  const std::int64_t quantity = cart_->quantityOf(sku_);
  gtk_label_set_text(as<GtkLabel>(quantity_.get()), (std::to_string(quantity) + " in cart").c_str());
  gtk_widget_set_visible(quantity_.get(), quantity > 0);
}

}  // namespace corvane::demo
