#include "demo/gtk/products_screen.h"

#include <utility>

#include "corvane/platform/foundation/while_alive.h"

namespace corvane::demo {

namespace {

constexpr const char* noCall = "No call is running, so everything is refused.";

GtkWidget* makeTools(const std::shared_ptr<ShopRequests>& requests) {
  const auto button = [&](const char* text, void (ShopRequests::*press)()) {
    return makeButton(text, whileAlive(std::weak_ptr(requests), press));
  };
  GtkWidget* const tools = makeRow();
  append(tools, button("In call", &ShopRequests::listProductsInCall));
  append(tools, button("In cart", &ShopRequests::listProductsInCart));
  append(tools, button("Cart status", &ShopRequests::listCartStatus));
  append(tools, button("Sign out", &ShopRequests::signOut));
  return tools;
}

}  // namespace

ProductsScreen::ProductsScreen(const std::vector<Product>& products, const std::shared_ptr<ShopRequests>& requests,
                               const std::shared_ptr<VelnorAgentView>& view)
    : screen_(keep(makeColumn(8, "screen"))),
      callState_(keep(makeLabel(noCall, "soft"))),
      tools_(keep(makeTools(requests))),
      floating_(view) {
  append(widget(), makeLabel("Products", "title"));
  append(widget(), callState_.get());
  append(widget(), makeList(products, requests));
  append(widget(), floating_.widget());
  append(widget(), tools_.get());
  append(widget(), log_.widget());
}

GtkWidget* ProductsScreen::makeList(const std::vector<Product>& products,
                                    const std::shared_ptr<ShopRequests>& requests) {
  GtkWidget* const list = makeColumn(8, "list");
  for (const Product& product : products) {
    append(list, cards_.emplace_back(product, requests, cart_).widget());
  }
  GtkWidget* const scrolled = makeScrolled(list);
  gtk_widget_set_vexpand(scrolled, TRUE);
  return scrolled;
}

void ProductsScreen::follow(const AgentEvent& event) {
  cart_->follow(event);
  floating_.follow(event);
  for (ProductCard& card : cards_) card.showQuantity();
  if (const auto* call = event.getIf<AgentEvent::CallStatusUpdate>()) {
    const bool isRunning = call->status == CallSessionStatus::running;
    gtk_label_set_text(as<GtkLabel>(callState_.get()),
                       isRunning ? "A call is running: the page can be asked." : noCall);
  }
}

}  // namespace corvane::demo
