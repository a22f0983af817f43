// A price without an amount is one that the page does not know.
export function formatPrice({ priceInCents, currency }, locale) {
  if (priceInCents === null) return "No price";
  const amount = priceInCents / 100;
  try {
    return new Intl.NumberFormat(locale, { style: "currency", currency }).format(amount);
  } catch {
    // A host may name a currency that is none.
    return `${amount.toFixed(2)} ${currency}`;
  }
}

// Amounts in different currencies stay apart.
export function formatTotal(prices, locale) {
  const totals = new Map();
  for (const { priceInCents, currency } of prices) {
    if (priceInCents !== null) totals.set(currency, (totals.get(currency) ?? 0) + priceInCents);
  }
  return [...totals]
    .map(([currency, priceInCents]) => formatPrice({ priceInCents, currency }, locale))
    .join(" + ");
}
