/// The requests that an app can make of the page, chosen by chance.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/soak/random_source.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/product/product.h"

namespace corvane::soak {

enum class Operation : std::uint8_t {
  addProductToCall,
  getProductsInCall,
  isProductInCall,
  removeProductInCall,
  addProductToCart,
  updateProductInCart,
  getProductsInCart,
  getCartStatus,
  isProductInCart,
  removeProductInCart,
  decrementProductInCart,
};
inline constexpr std::size_t operationCount = 11;

/// How the page calls what it is asked; a decrement asks for the cart's products first.
[[nodiscard]] std::string_view wireName(Operation operation);
/// Whether the completion gets a value.
[[nodiscard]] bool hasResult(Operation operation);

struct Request {
  Operation operation = Operation::getCartStatus;
  std::string sku{};
  std::int64_t quantity = 0;
  /// Which of the products is added.
  std::size_t product = 0;
};

/// SKUs that are only ever decremented, added and asked about. The second half of a decrement is then the one update
/// that any of them meets.
[[nodiscard]] bool isForDecrements(std::string_view sku);

[[nodiscard]] Request makeRequest(Operation operation, const std::vector<Product>& products, RandomSource& random);

/// Makes the request; the outcome comes in words.
void ask(VelnorAgentView& view, const Request& request, const std::vector<Product>& products,
         std::function<void(std::string)> completed);

}  // namespace corvane::soak
