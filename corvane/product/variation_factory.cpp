#include "corvane/product/variation_factory.h"

#include "corvane/product/product_spec_error.h"

namespace corvane {

namespace {

template <class Value>
std::optional<Value> firstOf(std::optional<Value> given, const std::optional<Value>& otherwise) {
  if (!given) return otherwise;
  return given;
}

template <class Value>
Value mandatory(std::optional<Value>&& given, const std::optional<Value>& otherwise, const char* property) {
  auto value = firstOf(std::move(given), otherwise);
  if (value) return *std::move(value);
  throw ProductSpecError(ProductSpecError::Kind::typeError, std::string("Missing mandatory property ") + property);
}

}  // namespace

Variation VariationFactory::createVariation(std::string sku, std::vector<VariationAttribute> attributes,
                                            VariationValues values) const {
  // What is missing first is told first, so the order of these three counts.
  auto givenImageUrls = mandatory(std::move(values.imageUrls), imageUrls, "imageUrls");
  auto givenName = mandatory(std::move(values.name), name, "name");
  auto givenPrice = mandatory(std::move(values.price), price, "price");
  return Variation({.attributes = std::move(attributes),
                    .comparableAttributes = firstOf(std::move(values.comparableAttributes), comparableAttributes),
                    .details = firstOf(std::move(values.details), details),
                    .imageUrls = std::move(givenImageUrls),
                    .inStock = values.inStock.value_or(inStock),
                    .name = std::move(givenName),
                    .price = std::move(givenPrice),
                    .rating = firstOf(values.rating, rating),
                    .sku = std::move(sku),
                    .subtitle = firstOf(std::move(values.subtitle), subtitle),
                    .url = firstOf(std::move(values.url), url)});
}

}  // namespace corvane
