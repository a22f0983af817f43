#include "benchmarks/soak/page_model.h"

#include <algorithm>
#include <utility>

#include "benchmarks/soak/outcome.h"

namespace corvane::soak {

namespace {

std::string textIn(JsonView object, std::string_view key) { return std::string(object.findString(key).value_or("")); }

std::int64_t numberIn(JsonView object, std::string_view key) {
  const auto member = object.find(key);
  return member ? member->integer().value_or(0) : 0;
}

std::string refusal(const std::string& sku, const char* place) {
  return outcomeOf(AgentError::AgentToolError{"No product \"" + sku + "\" in the " + place});
}

}  // namespace

Arrival Arrival::read(JsonView json) {
  return {.type = textIn(json, "type"),
          .sku = textIn(json, "sku"),
          .quantity = numberIn(json, "quantity"),
          .trouble = textIn(json, "kind"),
          .milliseconds = numberIn(json, "milliseconds"),
          .text = textIn(json, "text")};
}

bool Arrival::timesOut() const {
  return trouble == "never" || trouble == "unknownIdentifier" || trouble == "throws" || trouble == "reverseOrder" ||
         (trouble == "late" && milliseconds > 5000);
}

void PageModel::begin(JsonView pageState) {
  call_.clear();
  cart_.clear();
  const auto products = pageState.find("productsInCall").value_or(JsonView());
  for (const JsonView sku : products.elements()) call_.push_back({std::string(sku.string().value_or("")), {}});
}

std::string PageModel::receive(const Arrival& arrival, Operation operation) {
  if (arrival.trouble == "throws") return outcomeOf(AgentError::RequestTimeout{});
  if (arrival.trouble == "errorText") return outcomeOf(AgentError::AgentToolError{arrival.text});
  std::string outcome = carryOut(arrival, operation);
  if (arrival.timesOut()) return outcomeOf(AgentError::RequestTimeout{});
  const bool isRefused = outcome.starts_with("error");
  if (arrival.trouble == "wrongResultType" && hasResult(operation) && !isRefused) return std::string(noValue);
  return outcome;
}

std::string PageModel::carryOut(const Arrival& arrival, Operation operation) {
  const std::string& sku = arrival.sku;
  switch (operation) {
    using enum Operation;
    case addProductToCall:
      for (const Product& product : products_) {
        if (product.variations().front().sku() == sku) addToCall(product);
      }
      return std::string(done);
    case getProductsInCall: {
      std::vector<std::string> skus;
      for (const Article& article : call_) skus.push_back(article.sku);
      return outcomeOf(AgentResult<std::vector<std::string>>(std::move(skus)));
    }
    case isProductInCall:
      return outcomeOf(AgentResult<bool>(isInCall(sku)));
    case removeProductInCall:
      return removeFromCall(sku) ? std::string(done) : refusal(sku, "call");
    case addProductToCart:
      setQuantity(sku, quantityOf(sku) + 1);
      return std::string(done);
    case updateProductInCart:
      setQuantity(sku, arrival.quantity);
      return std::string(done);
    case getProductsInCart: {
      std::vector<std::string> skus;
      for (const auto& [line, quantity] : cart_) skus.push_back(line);
      return outcomeOf(AgentResult<std::vector<std::string>>(std::move(skus)));
    }
    // Its first half asks for the same.
    case decrementProductInCart:
    case getCartStatus:
      return outcomeOf(AgentResult<CartQuantities>(quantities()));
    case isProductInCart:
      return outcomeOf(AgentResult<bool>(quantityOf(sku) > 0));
    case removeProductInCart:
      if (quantityOf(sku) == 0) return refusal(sku, "cart");
      std::erase_if(cart_, [&](const auto& line) { return line.first == sku; });
      ++cartEventCount_;
      return std::string(done);
  }
  std::unreachable();
}

std::int64_t PageModel::quantityOf(std::string_view sku) const {
  const auto line =
      std::ranges::find(cart_, sku, [](const auto& candidate) { return std::string_view(candidate.first); });
  return line == cart_.end() ? 0 : line->second;
}

void PageModel::setQuantity(const std::string& sku, std::int64_t quantity) {
  ++cartEventCount_;
  const auto line = std::ranges::find(cart_, sku, [](const auto& candidate) { return candidate.first; });
  if (quantity < 1) {
    if (line != cart_.end()) cart_.erase(line);
  } else if (line != cart_.end()) {
    line->second = quantity;
  } else {
    cart_.emplace_back(sku, quantity);
  }
}

void PageModel::addToCall(const Product& product) {
  for (const Variation& variation : product.variations()) {
    const auto found = std::ranges::find(call_, variation.sku(), &Article::sku);
    Article& article = found == call_.end() ? call_.emplace_back() : *found;
    article = {variation.sku(), product.sku().value_or("")};
  }
}

bool PageModel::isInCall(std::string_view sku) const {
  return std::ranges::any_of(call_,
                             [&](const Article& article) { return article.sku == sku || article.ownSku == sku; });
}

bool PageModel::removeFromCall(std::string_view sku) {
  const bool isArticle = std::ranges::find(call_, sku, &Article::sku) != call_.end();
  return std::erase_if(
             call_, [&](const Article& article) { return isArticle ? article.sku == sku : article.ownSku == sku; }) > 0;
}

CartQuantities PageModel::quantities() const { return {cart_.begin(), cart_.end()}; }

std::string PageModel::state() const {
  std::vector<std::string> skus;
  for (const Article& article : call_) skus.push_back(article.sku);
  return outcomeOf(AgentResult<std::vector<std::string>>(std::move(skus))) +
         outcomeOf(AgentResult<CartQuantities>(quantities()));
}

std::string PageModel::stateOf(JsonView pageState) {
  std::vector<std::string> skus;
  const auto products = pageState.find("productsInCall").value_or(JsonView());
  for (const JsonView sku : products.elements()) skus.emplace_back(sku.string().value_or(""));
  CartQuantities cart;
  const auto lines = pageState.find("cart").value_or(JsonView());
  for (const JsonView::Member line : lines.members()) cart.emplace(line.key, line.value.integer().value_or(0));
  return outcomeOf(AgentResult<std::vector<std::string>>(std::move(skus))) +
         outcomeOf(AgentResult<CartQuantities>(std::move(cart)));
}

}  // namespace corvane::soak
