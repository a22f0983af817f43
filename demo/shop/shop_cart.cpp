#include "demo/shop/shop_cart.h"

namespace corvane::demo {

void ShopCart::follow(const AgentEvent& event) {
  if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>()) {
    quantities_[update->data.sku] = update->data.quantity;
  } else if (const auto* removed = event.getIf<AgentEvent::ProductRemovedFromCart>()) {
    quantities_.erase(removed->sku);
  } else if (const auto* call = event.getIf<AgentEvent::CallStatusUpdate>();
             call != nullptr && call->status == CallSessionStatus::disconnecting) {
    // The cart is the customer's, who is gone.
    quantities_.clear();
  }
}

std::int64_t ShopCart::quantityOf(std::string_view sku) const {
  const auto line = quantities_.find(sku);
  return line == quantities_.end() ? 0 : line->second;
}

}  // namespace corvane::demo
