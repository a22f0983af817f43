// What the agent shows, and what is in the cart.
import { formatPrice, formatTotal } from "../agent_tool/money.js";
import { productPicture } from "../agent_tool/pictures.js";

const productList = document.querySelector("#products");
const cartList = document.querySelector("#cart");
const total = document.querySelector("#total");

function element(tag, className, text) {
  const created = document.createElement(tag);
  created.className = className;
  if (text !== undefined) created.textContent = text;
  return created;
}

function wish(name, sku, text, spokenText) {
  const button = element("button", "small", text);
  button.type = "button";
  Object.assign(button.dataset, { wish: name, sku });
  button.setAttribute("aria-label", spokenText);
  return button;
}

function row(product, note, ...controls) {
  const item = element("li", "row");
  item.dataset.sku = product.sku;
  const words = element("div", "words");
  words.append(element("strong", "name", product.name), element("span", "note", note));
  item.append(productPicture(product), words, ...controls);
  return item;
}

function productRow(product, locale) {
  const { sku, name, variant } = product;
  const note = `${formatPrice(product, locale)} · ${variant}`;
  return row(product, note, wish("add", sku, "Add", `Add ${name} to the cart`));
}

function priceOf({ product, quantity }) {
  const { priceInCents, currency } = product;
  return { priceInCents: priceInCents === null ? null : priceInCents * quantity, currency };
}

function cartRow(line, locale) {
  const { sku, name } = line.product;
  return row(
    line.product,
    formatPrice(priceOf(line), locale),
    wish("less", sku, "−", `One ${name} less`),
    element("output", "quantity", line.quantity),
    wish("add", sku, "+", `One ${name} more`),
    wish("remove", sku, "×", `Remove ${name} from the cart`),
  );
}

// The rows are made anew on every change; whoever uses the keys stays where they were.
function replaceRows(list, rows, emptyText) {
  const { wish: focusedWish, sku } = list.contains(document.activeElement)
    ? document.activeElement.dataset
    : {};
  list.replaceChildren(...(rows.length > 0 ? rows : [element("li", "empty", emptyText)]));
  [...list.querySelectorAll("button")]
    .find(({ dataset }) => dataset.wish === focusedWish && dataset.sku === sku)
    ?.focus();
}

export function showShop({ products, lines, locale }) {
  replaceRows(productList, products.map((product) => productRow(product, locale)), "Nothing yet.");
  replaceRows(cartList, lines.map((line) => cartRow(line, locale)), "Your cart is empty.");
  total.textContent = lines.length > 0 ? formatTotal(lines.map(priceOf), locale) : "";
}
