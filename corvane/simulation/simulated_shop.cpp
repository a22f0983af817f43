#include "corvane/simulation/simulated_shop.h"

#include <algorithm>
#include <limits>

#include "corvane/bridge/action.h"
#include "corvane/bridge/product_cart_status_coding.h"
#include "corvane/platform/foundation/json_coder.h"
#include "corvane/simulation/page_message.h"

namespace corvane::simulation {

namespace {

template <class Value>
std::string jsonText(const Value& value) {
  JsonWriter writer;
  JsonCoding<Value>::encode(value, writer);
  return writer.take();
}

std::int64_t oneMore(std::int64_t quantity) {
  return quantity == std::numeric_limits<std::int64_t>::max() ? quantity : quantity + 1;
}

ActionOutcome answerWith(std::string result) { return {.events = {}, .error = {}, .result = std::move(result)}; }

ActionOutcome refusal(std::string_view what, std::string_view sku) {
  return {.events = {}, .error = std::string(what) + " \"" + std::string(sku) + "\"", .result = {}};
}

}  // namespace

std::optional<ActionOutcome> SimulatedShop::perform(std::string_view eventType, JsonView data) {
  const auto action = fromRawValue<Action>(eventType);
  if (!action) return std::nullopt;
  const std::string_view sku = data.findString("sku").value_or("");
  switch (*action) {
    using enum Action;
    case addProductToCall:
      return showInCall(data.find("data").value_or(JsonView()));
    case getProductsInCall:
      return answerWith(jsonText(skusInCall_));
    case isProductInCall:
      return answerWith(jsonText(isInCall(sku)));
    case removeProductInCall:
      return removeFromCall(sku);
    case addProductToCart:
      return setQuantity(sku, oneMore(quantityOf(sku)));
    case updateProductInCart:
      return setQuantity(sku, data.find("quantity").value_or(JsonView()).integer().value_or(0));
    case getProductsInCart:
      return answerWith(jsonText(skusInCart()));
    case isProductInCart:
      return answerWith(jsonText(cart_.contains(sku)));
    case removeProductInCart:
      return removeFromCart(sku);
    case maximize:
    case refreshSsoToken:
    case ssoLogout:
      return std::nullopt;
  }
  return std::nullopt;
}

ActionOutcome SimulatedShop::showInCall(JsonView product) {
  const auto inner = product.find("product").value_or(JsonView());
  for (const JsonView variation : inner.find("variations").value_or(JsonView()).elements()) {
    const std::string_view sku = variation.findString("sku").value_or("");
    if (!isInCall(sku)) skusInCall_.emplace_back(sku);
  }
  return {};
}

ActionOutcome SimulatedShop::removeFromCall(std::string_view sku) {
  if (std::erase(skusInCall_, sku) == 0) return refusal("The call has no product", sku);
  return {};
}

ActionOutcome SimulatedShop::setQuantity(std::string_view sku, std::int64_t quantity) {
  const ProductCartStatus line{.sku = std::string(sku), .quantity = std::max<std::int64_t>(quantity, 0)};
  std::string event = pageMessage(WebAgentEventType::productUpdateInCart, line);
  if (quantity < 1) {
    if (const auto item = cart_.find(sku); item != cart_.end()) cart_.erase(item);
  } else {
    cart_.insert_or_assign(std::string(sku), quantity);
  }
  return {.events = {std::move(event)}, .error = {}, .result = {}};
}

ActionOutcome SimulatedShop::removeFromCart(std::string_view sku) {
  const auto item = cart_.find(sku);
  if (item == cart_.end()) return refusal("The cart has no product", sku);
  cart_.erase(item);
  const ProductCartStatus line{.sku = std::string(sku), .quantity = 0};
  return {.events = {pageMessage(WebAgentEventType::productRemovedFromCart, line)}, .error = {}, .result = {}};
}

std::vector<std::string> SimulatedShop::skusInCart() const {
  std::vector<std::string> skus;
  for (const auto& [sku, quantity] : cart_) skus.push_back(sku);
  return skus;
}

bool SimulatedShop::isInCall(std::string_view sku) const {
  return std::ranges::find(skusInCall_, sku) != skusInCall_.end();
}

std::int64_t SimulatedShop::quantityOf(std::string_view sku) const {
  const auto item = cart_.find(sku);
  return item == cart_.end() ? 0 : item->second;
}

}  // namespace corvane::simulation
