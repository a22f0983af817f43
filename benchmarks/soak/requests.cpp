#include "benchmarks/soak/requests.h"

#include <array>
#include <utility>

#include "benchmarks/soak/outcome.h"

namespace corvane::soak {

namespace {

constexpr std::size_t skuCount = 8;

std::string skuInCart(char pool, RandomSource& random) { return pool + std::to_string(random.below(skuCount)); }

/// A variation, a product as a whole, or something unknown.
std::string skuInCall(const std::vector<Product>& products, RandomSource& random) {
  if (random.happensInPercent(10)) return "NOBODY-KNOWS-<IT>\u2028";
  const Product& product = products[random.below(products.size())];
  if (random.happensInPercent(20) && product.sku()) return *product.sku();
  return product.variations()[random.below(product.variations().size())].sku();
}

}  // namespace

std::string_view wireName(Operation operation) {
  static constexpr std::array<std::string_view, operationCount> names{
      "ADD_PRODUCT_TO_CALL", "GET_PRODUCTS_IN_CALL",   "IS_PRODUCT_IN_CALL",   "REMOVE_PRODUCT_IN_CALL",
      "ADD_PRODUCT_TO_CART", "UPDATE_PRODUCT_IN_CART", "GET_PRODUCTS_IN_CART", "GET_PRODUCTS_IN_CART",
      "IS_PRODUCT_IN_CART",  "REMOVE_PRODUCT_IN_CART", "GET_PRODUCTS_IN_CART"};
  return names[static_cast<std::size_t>(operation)];
}

bool hasResult(Operation operation) {
  switch (operation) {
    using enum Operation;
    case getProductsInCall:
    case isProductInCall:
    case getProductsInCart:
    case getCartStatus:
    case isProductInCart:
    case decrementProductInCart:
      return true;
    default:
      return false;
  }
}

bool isForDecrements(std::string_view sku) { return sku.starts_with('D'); }

Request makeRequest(Operation operation, const std::vector<Product>& products, RandomSource& random) {
  Request request{.operation = operation};
  switch (operation) {
    using enum Operation;
    case addProductToCall:
      request.product = random.below(products.size());
      request.sku = products[request.product].variations().front().sku();
      break;
    case isProductInCall:
    case removeProductInCall:
      request.sku = skuInCall(products, random);
      break;
    case addProductToCart:
    case isProductInCart:
    case removeProductInCart:
      request.sku = skuInCart(random.happensInPercent(50) ? 'D' : 'S', random);
      break;
    case updateProductInCart:
      request.sku = skuInCart('S', random);
      request.quantity = static_cast<std::int64_t>(random.below(6)) - 1;
      break;
    case decrementProductInCart:
      request.sku = skuInCart('D', random);
      break;
    case getProductsInCall:
    case getProductsInCart:
    case getCartStatus:
      break;
  }
  return request;
}

void ask(VelnorAgentView& view, const Request& request, const std::vector<Product>& products,
         std::function<void(std::string)> completed) {
  const auto tell = [completed = std::move(completed)](const auto& outcome) { completed(outcomeOf(outcome)); };
  switch (request.operation) {
    using enum Operation;
    case addProductToCall:
      return view.addProductToCall(products[request.product], tell);
    case getProductsInCall:
      return view.getProductsInCall(tell);
    case isProductInCall:
      return view.isProductInCall(request.sku, tell);
    case removeProductInCall:
      return view.removeProductInCall(request.sku, tell);
    case addProductToCart:
      return view.addProductToCart(request.sku, tell);
    case updateProductInCart:
      return view.updateProductInCart(request.sku, request.quantity, tell);
    case getProductsInCart:
      return view.getProductsInCart(tell);
    case getCartStatus:
      return view.getCartStatus(tell);
    case isProductInCart:
      return view.isProductInCart(request.sku, tell);
    case removeProductInCart:
      return view.removeProductInCart(request.sku, tell);
    case decrementProductInCart:
      return view.decrementProductInCart(request.sku, tell);
  }
}

}  // namespace corvane::soak
