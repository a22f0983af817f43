import { ActionType, EventType } from "./protocol.js";
import { Refusal } from "./refusal.js";

function skuIn({ sku }) {
  if (typeof sku !== "string") throw new Refusal("The request names no SKU");
  return sku;
}

// Numbers above this one do not reach the page undamaged.
function countable(quantity) {
  if (!Number.isSafeInteger(quantity)) throw new Refusal("The quantity is no countable number");
  return quantity;
}

function inQuotes(sku) {
  return `"${sku}"`;
}

// What the host can ask of the call and the cart. For each action type: how it
// is carried out and which result it has, if any. A cart that changes is told
// to the host first, so that the host's own cart is right when the answer comes.
export function requestsOf({ callProducts, cart, post }) {
  function setQuantity(sku, quantity) {
    cart.set(sku, countable(quantity));
    post(EventType.productUpdatedInCart, { sku, quantity });
  }

  return new Map([
    [ActionType.addProductToCall, ({ data }) => callProducts.add(data)],
    [ActionType.getProductsInCall, () => callProducts.skus],
    [ActionType.isProductInCall, (data) => callProducts.has(skuIn(data))],
    [
      ActionType.removeProductInCall,
      (data) => {
        const sku = skuIn(data);
        if (!callProducts.remove(sku)) throw new Refusal(`No product ${inQuotes(sku)} in the call`);
      },
    ],
    [
      ActionType.addProductToCart,
      (data) => setQuantity(skuIn(data), cart.quantityOf(skuIn(data)) + 1),
    ],
    [ActionType.updateProductInCart, (data) => setQuantity(skuIn(data), data.quantity)],
    [ActionType.getProductsInCart, () => cart.lines.map(({ sku }) => sku)],
    [ActionType.isProductInCart, (data) => cart.quantityOf(skuIn(data)) > 0],
    [
      ActionType.removeProductInCart,
      (data) => {
        const sku = skuIn(data);
        if (cart.quantityOf(sku) === 0) throw new Refusal(`No product ${inQuotes(sku)} in the cart`);
        cart.remove(sku);
        post(EventType.productRemovedFromCart, { sku, quantity: 0 });
      },
    ],
  ]);
}

// The outcome as an answer says it: an error text, or a result that may be absent.
export function outcomeOf(request, data) {
  try {
    return { result: request(data) };
  } catch (error) {
    if (error instanceof Refusal) return { error: error.message };
    throw error;
  }
}
