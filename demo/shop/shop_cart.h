/// What the host app knows of the customer's cart.
#pragma once

#include <cstdint>
#include <string_view>

#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/completion.h"

namespace corvane::demo {

/// Follows the events of the agent view, so that the app can show quantities without asking for them.
class ShopCart {
 public:
  void follow(const AgentEvent& event);
  /// 0 for what is not in the cart.
  [[nodiscard]] std::int64_t quantityOf(std::string_view sku) const;

 private:
  CartQuantities quantities_;
};

}  // namespace corvane::demo
