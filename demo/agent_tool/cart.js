const largestQuantity = 99;

export class Cart {
  #quantities = new Map();
  #changed;

  constructor(changed) {
    this.#changed = changed;
  }

  get lines() {
    return [...this.#quantities].map(([sku, quantity]) => ({ sku, quantity }));
  }

  get pieces() {
    return this.lines.reduce((sum, { quantity }) => sum + quantity, 0);
  }

  quantityOf(sku) {
    return this.#quantities.get(sku) ?? 0;
  }

  // A quantity below 1 takes the item away.
  set(sku, quantity) {
    if (quantity < 1) this.#quantities.delete(sku);
    else this.#quantities.set(sku, quantity);
    this.#changed();
  }

  // Returns the quantity the item ends up with; 0 means the item is gone. The
  // limit is for the agent's fingers: what the host has set may be above it.
  add(sku, difference) {
    const before = this.quantityOf(sku);
    const most = Math.max(largestQuantity, before);
    const quantity = Math.min(Math.max(before + difference, 0), most);
    this.set(sku, quantity);
    return quantity;
  }

  remove(sku) {
    this.#quantities.delete(sku);
    this.#changed();
  }

  empty() {
    this.#quantities.clear();
    this.#changed();
  }
}
