import { formatPrice, productBySku } from "./catalogue.js";
import { icon, productPicture } from "./pictures.js";

const productList = document.querySelector("#product-list");
const productCount = document.querySelector("#product-count");
const cartList = document.querySelector("#cart-list");
const cartCount = document.querySelector("#cart-count");
const cartTotal = document.querySelector("#cart-total");

function element(tag, className, text) {
  const created = document.createElement(tag);
  created.className = className;
  if (text !== undefined) created.textContent = text;
  return created;
}

function actionButton(action, sku, className, text, spokenText) {
  const button = element("button", className, text);
  button.type = "button";
  button.dataset.action = action;
  button.dataset.sku = sku;
  button.setAttribute("aria-label", spokenText);
  button.title = spokenText;
  return button;
}

function addToCartButton(sku, name) {
  const button = actionButton("addToCart", sku, "button small soft", "Add", `Add ${name} to cart`);
  button.prepend(icon("cart"));
  return button;
}

function row(product, note) {
  const item = element("li", "product-row");
  const words = element("div", "product-words");
  words.append(element("strong", "product-name", product.name), element("span", "product-note", note));
  item.append(productPicture(product.picture), words);
  return item;
}

function emptyRow(text) {
  return element("li", "empty-row", text);
}

function productRow(product, locale) {
  const { sku, name, variant, priceInCents } = product;
  const item = row(product, `${formatPrice(priceInCents, locale)} · ${variant}`);
  item.title = sku;
  item.append(
    addToCartButton(sku, name),
    actionButton("removeFromCall", sku, "button small round", "×", `Remove ${name} from call`),
  );
  return item;
}

function cartRow({ sku, quantity }, locale) {
  const product = productBySku(sku);
  const { name, priceInCents } = product;
  const item = row(product, formatPrice(priceInCents * quantity, locale));
  const stepper = element("div", "stepper");
  stepper.append(
    actionButton("decreaseInCart", sku, "button small round", "−", `One ${name} less`),
    element("output", "quantity", quantity),
    actionButton("increaseInCart", sku, "button small round", "+", `One ${name} more`),
  );
  item.append(
    stepper,
    actionButton("removeFromCart", sku, "button small round", "×", `Remove ${name} from cart`),
  );
  return item;
}

// The rows are rebuilt on every change; without this a keyboard user would be
// thrown back to the top of the page after each press.
function replaceRowsKeepingFocus(list, rows) {
  const focused = list.contains(document.activeElement) ? document.activeElement.dataset : null;
  list.replaceChildren(...rows);
  if (!focused) return;
  const sameButton = [...list.querySelectorAll("button")].find(
    ({ dataset }) => dataset.action === focused.action && dataset.sku === focused.sku,
  );
  (sameButton ?? list.querySelector("button"))?.focus();
}

export function showProducts(products, locale) {
  const rows = products.map((product) => productRow(product, locale));
  replaceRowsKeepingFocus(
    productList,
    rows.length > 0 ? rows : [emptyRow("No products left. A new call brings them back.")],
  );
  productCount.textContent = products.length;
}

export function showCart(cart, locale) {
  const lines = cart.lines;
  const rows = lines.map((line) => cartRow(line, locale));
  replaceRowsKeepingFocus(cartList, rows.length > 0 ? rows : [emptyRow("The cart is empty.")]);
  cartCount.textContent = cart.pieces;
  const total = lines.reduce(
    (sum, { sku, quantity }) => sum + productBySku(sku).priceInCents * quantity,
    0,
  );
  cartTotal.textContent = lines.length > 0 ? formatPrice(total, locale) : "";
}
