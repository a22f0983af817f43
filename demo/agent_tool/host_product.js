import { Refusal } from "./refusal.js";

function isObject(value) {
  return typeof value === "object" && value !== null;
}

function firstText(...candidates) {
  return candidates.find((candidate) => typeof candidate === "string" && candidate !== "");
}

function centsOf(price) {
  return Number.isFinite(price?.current) ? Math.round(price.current * 100) : null;
}

function listOf(value) {
  return Array.isArray(value) ? value.filter(isObject) : [];
}

// The options that the variation takes, by the names that customers read.
function optionsText(variation, product) {
  return listOf(variation.attributes)
    .map(({ id, option }) => {
      const definition = listOf(product.attributes).find((candidate) => candidate.id === id);
      const named = listOf(definition?.options).find((candidate) => candidate.id === option);
      return firstText(named?.name, option);
    })
    .filter((text) => text !== undefined)
    .join(", ");
}

function articleOf(variation, { product, currency }) {
  const { sku, name, subtitle, price, imageUrls, inStock } = variation;
  const about = firstText(optionsText(variation, product), subtitle, product.brandName, sku) ?? "";
  return Object.freeze({
    sku,
    name: firstText(name, product.name, sku) ?? "",
    variant: inStock === false ? `${about}, not in stock` : about,
    priceInCents: centsOf(price),
    currency: firstText(price?.currency, currency) ?? "",
    imageUrl: Array.isArray(imageUrls) ? firstText(...imageUrls.slice(0, 1)) : undefined,
  });
}

// Reads the product object of a host into the articles that the call shows,
// one for each variation. A variation is what a customer can buy.
export function articlesOf(content) {
  const product = content?.product;
  const variations = product?.variations;
  if (!Array.isArray(variations) || variations.length === 0) {
    throw new Refusal("The product has no variations");
  }
  if (!variations.every((variation) => isObject(variation) && typeof variation.sku === "string")) {
    throw new Refusal("A variation of the product has no SKU");
  }
  return variations.map((variation) => articleOf(variation, content));
}

export function ownSkuOf(content) {
  return typeof content?.product?.sku === "string" ? content.product.sku : null;
}
