/// What a simulated page knows of the products in its call and of the customer's cart.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/bridge/completion.h"
#include "corvane/export.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane::simulation {

/// What an action leads to.
struct ActionOutcome {
  /// Messages that the page posts before it answers, as JSON text.
  std::vector<std::string> events;
  /// What went wrong, in the page's words.
  std::optional<std::string> error;
  /// The answer's "result" as JSON text.
  std::optional<std::string> result;
};

/// The products in a call and a cart, and what actions do to them.
class CORVANE_EXPORT SimulatedShop {
 public:
  /// Does what an action asks for. None for actions that are not answered.
  [[nodiscard]] std::optional<ActionOutcome> perform(std::string_view eventType, JsonView data);

  /// The SKUs of the variations that the call shows, in the order of coming.
  [[nodiscard]] const std::vector<std::string>& skusInCall() const { return skusInCall_; }
  [[nodiscard]] const CartQuantities& cart() const { return cart_; }

  /// What happens when the customer or the agent does the same in the page. A quantity below 1 empties the line.
  ActionOutcome setQuantity(std::string_view sku, std::int64_t quantity);
  /// An error in the outcome where there is no such product; nothing has changed then.
  ActionOutcome removeFromCart(std::string_view sku);
  ActionOutcome removeFromCall(std::string_view sku);

 private:
  ActionOutcome showInCall(JsonView product);
  [[nodiscard]] std::vector<std::string> skusInCart() const;
  [[nodiscard]] bool isInCall(std::string_view sku) const;
  [[nodiscard]] std::int64_t quantityOf(std::string_view sku) const;

  std::vector<std::string> skusInCall_;
  CartQuantities cart_;
};

}  // namespace corvane::simulation
