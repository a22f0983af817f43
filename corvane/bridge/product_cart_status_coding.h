/// The JSON members of a cart line.
#pragma once

#include "corvane/bridge/product_cart_status.h"
#include "corvane/platform/foundation/json_coder.h"

namespace corvane {

template <>
struct JsonFields<ProductCartStatus> {
  static constexpr auto fields =
      std::tuple{required("sku", &ProductCartStatus::sku), required("quantity", &ProductCartStatus::quantity)};
};

}  // namespace corvane
