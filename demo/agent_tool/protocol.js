// The words this page and the host understand, and the one way to say them.

export const EventType = Object.freeze({
  callStarted: "SDK_CALL_STARTED",
  callStatus: "SDK_CALL_STATUS",
  minimize: "SDK_MINIMIZE_AGENT_TOOL",
  productUpdatedInCart: "SDK_PRODUCT_UPDATE_IN_CART",
  productRemovedFromCall: "SDK_PRODUCT_REMOVED_FROM_CALL",
  productRemovedFromCart: "SDK_PRODUCT_REMOVED_FROM_CART",
  refreshSsoToken: "SDK_REFRESH_SSO_TOKEN",
  unauthorized: "SDK_UNAUTHORIZED",
});

export const CallStatus = Object.freeze({
  starting: "CALL_SESSION_STATUS_STARTING",
  ready: "CALL_SESSION_STATUS_READY",
  waiting: "CALL_SESSION_STATUS_WAITING",
  connecting: "CALL_SESSION_STATUS_CONNECTING",
  running: "CALL_SESSION_STATUS_RUNNING",
  reconnecting: "CALL_SESSION_STATUS_RECONNECTING",
  disconnecting: "CALL_SESSION_STATUS_DISCONNECTING",
  disconnected: "CALL_SESSION_STATUS_DISCONNECTED",
  paused: "CALL_SESSION_STATUS_PAUSED",
  waitingButLostRemote: "CALL_SESSION_STATUS_WAITING_BUT_LOST_REMOTE",
  // The missing R is how the host spells it.
  forwarding: "CALL_SESSION_STATUS_FOWARDING",
});

export const ActionType = Object.freeze({
  maximize: "SDK_MAXIMIZE_AGENT_TOOL",
  addProductToCall: "SDK_INTERNAL_ADD_PRODUCT_TO_CALL",
  getProductsInCall: "SDK_INTERNAL_GET_PRODUCTS_IN_CALL",
  isProductInCall: "SDK_INTERNAL_IS_PRODUCT_IN_CALL",
  removeProductInCall: "SDK_INTERNAL_REMOVE_PRODUCT_IN_CALL",
  addProductToCart: "SDK_INTERNAL_ADD_PRODUCT_TO_CART",
  getProductsInCart: "SDK_INTERNAL_GET_PRODUCTS_IN_CART",
  isProductInCart: "SDK_INTERNAL_IS_PRODUCT_IN_CART",
  removeProductInCart: "SDK_INTERNAL_REMOVE_PRODUCT_IN_CART",
  updateProductInCart: "SDK_INTERNAL_UPDATE_PRODUCT_IN_CART",
  refreshSsoToken: "SDK_INTERNAL_REFRESH_SSO_TOKEN",
  ssoLogout: "SDK_INTERNAL_LOGOUT",
});

const internalActionPrefix = "SDK_INTERNAL_";
const answerSuffix = "_CALLBACK";

export function answerTypeOf(actionType) {
  return actionType + answerSuffix;
}

// Actions of a newer host, unknown here, count as well. The page's own answers
// come by the same window, so their suffix tells them apart.
export function isActionType(eventType) {
  return (
    typeof eventType === "string" &&
    (eventType.startsWith(internalActionPrefix) || eventType === ActionType.maximize) &&
    !eventType.endsWith(answerSuffix)
  );
}

// The host listens in every frame and accepts a frame's own origin only. So
// the event goes to this window even when the page sits inside another one.
export function postEvent(eventType, data) {
  window.postMessage(JSON.stringify({ eventType, data }), window.location.origin);
}
