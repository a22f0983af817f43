import { productBySku } from "./known_products.js";
import { formatPrice, formatTotal } from "./money.js";
import { icon, productPicture } from "./pictures.js";
import { shortened } from "./shortened.js";

// A host may describe thousands of variations; all are in the call, and the
// first of them on the screen.
const mostRows = 100;

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
  button.setAttribute("aria-label", shortened(spokenText));
  button.title = shortened(spokenText);
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
  words.append(
    element("strong", "product-name", shortened(product.name)),
    element("span", "product-note", shortened(note)),
  );
  item.title = shortened(product.sku);
  item.append(productPicture(product), words);
  return item;
}

function emptyRow(text) {
  return element("li", "empty-row", text);
}

function productRow(product, locale) {
  const { sku, name, variant } = product;
  const item = row(product, `${formatPrice(product, locale)} · ${variant}`);
  item.append(
    addToCartButton(sku, name),
    actionButton("removeFromCall", sku, "button small round", "×", `Remove ${name} from call`),
  );
  return item;
}

function priceOf({ sku, quantity }) {
  const { priceInCents, currency } = productBySku(sku);
  return { priceInCents: priceInCents === null ? null : priceInCents * quantity, currency };
}

function cartRow(line, locale) {
  const { sku, quantity } = line;
  const product = productBySku(sku);
  const { name } = product;
  const item = row(product, formatPrice(priceOf(line), locale));
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
  list.replaceChildren(...rows.slice(0, mostRows));
  if (rows.length > mostRows) list.append(emptyRow(`… and ${rows.length - mostRows} more`));
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
  cartTotal.textContent = shortened(formatTotal(lines.map(priceOf), locale));
}
