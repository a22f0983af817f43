/// One line of the customer's cart.
#pragma once

#include <cstdint>
#include <string>

#include "corvane/export.h"
#include "corvane/platform/foundation/json_coding.h"

namespace corvane {

/// A cart line as the page reports it. `encodeJson` and `decodeJson` take it.
struct ProductCartStatus {
  std::string sku;
  std::int64_t quantity = 0;

  bool operator==(const ProductCartStatus&) const = default;
};

}  // namespace corvane
