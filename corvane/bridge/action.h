/// The actions that the host posts into the page.
#pragma once

#include <array>
#include <cstdint>

#include "corvane/platform/foundation/raw_text.h"

namespace corvane {

enum class Action : std::uint8_t {
  maximize,
  addProductToCall,
  getProductsInCall,
  isProductInCall,
  removeProductInCall,
  addProductToCart,
  getProductsInCart,
  isProductInCart,
  removeProductInCart,
  updateProductInCart,
  refreshSsoToken,
  ssoLogout,
};

template <>
struct RawTextTable<Action> {
  using enum Action;
  static constexpr std::array rows{
      RawText{maximize, "SDK_MAXIMIZE_AGENT_TOOL"},
      RawText{addProductToCall, "SDK_INTERNAL_ADD_PRODUCT_TO_CALL"},
      RawText{getProductsInCall, "SDK_INTERNAL_GET_PRODUCTS_IN_CALL"},
      RawText{isProductInCall, "SDK_INTERNAL_IS_PRODUCT_IN_CALL"},
      RawText{removeProductInCall, "SDK_INTERNAL_REMOVE_PRODUCT_IN_CALL"},
      RawText{addProductToCart, "SDK_INTERNAL_ADD_PRODUCT_TO_CART"},
      RawText{getProductsInCart, "SDK_INTERNAL_GET_PRODUCTS_IN_CART"},
      RawText{isProductInCart, "SDK_INTERNAL_IS_PRODUCT_IN_CART"},
      RawText{removeProductInCart, "SDK_INTERNAL_REMOVE_PRODUCT_IN_CART"},
      RawText{updateProductInCart, "SDK_INTERNAL_UPDATE_PRODUCT_IN_CART"},
      RawText{refreshSsoToken, "SDK_INTERNAL_REFRESH_SSO_TOKEN"},
      RawText{ssoLogout, "SDK_INTERNAL_LOGOUT"},
  };
};

}  // namespace corvane
