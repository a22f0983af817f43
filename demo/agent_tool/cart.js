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

  // Returns the quantity the line ends up with; 0 means the line is gone.
  add(sku, difference) {
    const before = this.#quantities.get(sku) ?? 0;
    const quantity = Math.min(Math.max(before + difference, 0), largestQuantity);
    if (quantity === 0) this.#quantities.delete(sku);
    else this.#quantities.set(sku, quantity);
    this.#changed();
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
