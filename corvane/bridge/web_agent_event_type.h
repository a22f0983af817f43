/// The event types that the page sends.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "corvane/platform/foundation/raw_text.h"

namespace corvane {

enum class WebAgentEventType : std::uint8_t {
  unknown,
  callStarted,
  callStatus,
  minimizeAgentTool,
  productUpdateInCart,
  productRemovedFromCall,
  productRemovedFromCart,
  addProductToCallCallback,
  addProductToCartCallback,
  getProductsInCallCallback,
  getProductsInCartCallback,
  isProductInCallCallback,
  isProductInCartCallback,
  removeProductInCallCallback,
  removeProductInCartCallback,
  updateProductInCartCallback,
  refreshSsoToken,
  unauthorized,
};

template <>
struct RawTextTable<WebAgentEventType> {
  using enum WebAgentEventType;
  static constexpr std::array rows{
      RawText{unknown, "unknown"},
      RawText{callStarted, "SDK_CALL_STARTED"},
      RawText{callStatus, "SDK_CALL_STATUS"},
      RawText{minimizeAgentTool, "SDK_MINIMIZE_AGENT_TOOL"},
      RawText{productUpdateInCart, "SDK_PRODUCT_UPDATE_IN_CART"},
      RawText{productRemovedFromCall, "SDK_PRODUCT_REMOVED_FROM_CALL"},
      RawText{productRemovedFromCart, "SDK_PRODUCT_REMOVED_FROM_CART"},
      RawText{addProductToCallCallback, "SDK_INTERNAL_ADD_PRODUCT_TO_CALL_CALLBACK"},
      RawText{addProductToCartCallback, "SDK_INTERNAL_ADD_PRODUCT_TO_CART_CALLBACK"},
      RawText{getProductsInCallCallback, "SDK_INTERNAL_GET_PRODUCTS_IN_CALL_CALLBACK"},
      RawText{getProductsInCartCallback, "SDK_INTERNAL_GET_PRODUCTS_IN_CART_CALLBACK"},
      RawText{isProductInCallCallback, "SDK_INTERNAL_IS_PRODUCT_IN_CALL_CALLBACK"},
      RawText{isProductInCartCallback, "SDK_INTERNAL_IS_PRODUCT_IN_CART_CALLBACK"},
      RawText{removeProductInCallCallback, "SDK_INTERNAL_REMOVE_PRODUCT_IN_CALL_CALLBACK"},
      RawText{removeProductInCartCallback, "SDK_INTERNAL_REMOVE_PRODUCT_IN_CART_CALLBACK"},
      RawText{updateProductInCartCallback, "SDK_INTERNAL_UPDATE_PRODUCT_IN_CART_CALLBACK"},
      RawText{refreshSsoToken, "SDK_REFRESH_SSO_TOKEN"},
      RawText{unauthorized, "SDK_UNAUTHORIZED"},
  };
};

/// What every event type of the page begins with.
inline constexpr std::string_view eventTypePrefix = "SDK_";
/// What the event types that answer a request, and no others, end with.
inline constexpr std::string_view answerSuffix = "_CALLBACK";

}  // namespace corvane
