#include "demo/shop/shop_requests.h"

#include <utility>

#include "demo/shop/outcome_text.h"

namespace corvane::demo {

namespace {

std::string call(const char* operation, const std::string& argument = {}) {
  return std::string(operation) + "(" + argument + ")";
}

}  // namespace

ShopRequests::ShopRequests(std::shared_ptr<VelnorAgentView> view, Report report)
    : view_(std::move(view)), report_(std::move(report)) {}

auto ShopRequests::reportAs(std::string request) const {
  return [request = std::move(request), report = report_](const auto& outcome) {
    report(request + ": " + outcomeText(outcome));
  };
}

void ShopRequests::addToCall(const Product& product) {
  view_->addProductToCall(product, reportAs(call("addProductToCall", product.name().value_or("a product"))));
}

void ShopRequests::addToCart(const std::string& sku) {
  view_->addProductToCart(sku, reportAs(call("addProductToCart", sku)));
}

void ShopRequests::setQuantity(const std::string& sku, std::int64_t quantity) {
  view_->updateProductInCart(sku, quantity,
                             reportAs(call("updateProductInCart", sku + ", " + std::to_string(quantity))));
}

void ShopRequests::decrement(const std::string& sku) {
  view_->decrementProductInCart(sku, reportAs(call("decrementProductInCart", sku)));
}

void ShopRequests::removeFromCart(const std::string& sku) {
  view_->removeProductInCart(sku, reportAs(call("removeProductInCart", sku)));
}

void ShopRequests::askIfInCart(const std::string& sku) {
  view_->isProductInCart(sku, reportAs(call("isProductInCart", sku)));
}

void ShopRequests::listProductsInCall() { view_->getProductsInCall(reportAs(call("getProductsInCall"))); }

void ShopRequests::listProductsInCart() { view_->getProductsInCart(reportAs(call("getProductsInCart"))); }

void ShopRequests::listCartStatus() { view_->getCartStatus(reportAs(call("getCartStatus"))); }

void ShopRequests::refreshToken(const std::string& responseId) {
  // A shop gets it from its own sign-in service.
  view_->refreshSsoToken("demo-shop-token-7f3a9c", responseId);
  report_(call("refreshSsoToken", responseId));
}

void ShopRequests::signOut() {
  view_->signOut();
  report_(call("signOut"));
}

}  // namespace corvane::demo
