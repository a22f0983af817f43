import { products } from "./catalogue.js";
import { articlesOf, ownSkuOf } from "./host_product.js";
import { learnProduct, productBySku } from "./known_products.js";

// The articles that the call shows, each under its own SKU. A product that a
// host adds is shown as all its variations. So its list of SKUs names each of
// them and never the product's own SKU. A host may still ask for or remove the
// product by that SKU; it then means every variation that is left.
export class CallProducts {
  #ownSkus = new Map();
  #changed;

  constructor(changed) {
    this.#changed = changed;
    this.#fill();
  }

  get skus() {
    return [...this.#ownSkus.keys()];
  }

  get articles() {
    return this.skus.map(productBySku);
  }

  #fill() {
    this.#ownSkus = new Map(products.map(({ sku }) => [sku, null]));
  }

  #skusMeant(sku) {
    if (this.#ownSkus.has(sku)) return [sku];
    return this.skus.filter((candidate) => this.#ownSkus.get(candidate) === sku);
  }

  has(sku) {
    return this.#skusMeant(sku).length > 0;
  }

  add(content) {
    for (const article of articlesOf(content)) {
      learnProduct(article);
      this.#ownSkus.set(article.sku, ownSkuOf(content));
    }
    this.#changed();
  }

  // Returns whether there was anything to remove.
  remove(sku) {
    const meant = this.#skusMeant(sku);
    for (const each of meant) this.#ownSkus.delete(each);
    if (meant.length > 0) this.#changed();
    return meant.length > 0;
  }

  reset() {
    this.#fill();
    this.#changed();
  }
}
