#include "benchmarks/product_samples.h"

#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace corvane::benchmarks {

namespace {

std::vector<AttributeDefinitionOption> makeOptions(const std::string& name, std::size_t count) {
  std::vector<AttributeDefinitionOption> options;
  for (std::size_t index = 0; index < count; ++index) {
    options.emplace_back(name + "-" + std::to_string(index), name + " number " + std::to_string(index));
  }
  return options;
}

Variation makeVariation(std::size_t index, std::string colour, std::string size) {
  const std::string number = std::to_string(index);
  const std::string page = "https://shop.example/products/oxford-shirt/" + number;
  return Variation({
      .attributes = {{"colour", std::move(colour)}, {"size", std::move(size)}},
      .comparableAttributes = {{{"material", "Material", "Cotton, organically grown"},
                                {"care", "Care", "Wash at 40°C"}}},
      .details = {{Detail::paragraph("A shirt for every day of the week, woven in the Swiss Jura."),
                   Detail::bullets({"Two pockets", "Mother-of-pearl buttons", "Slim cut"})}},
      .imageUrls = {page + "/front.jpg", page + "/back.jpg", page + "/worn.jpg"},
      .inStock = index % 3 != 0,
      .name = "Oxford shirt " + number,
      .price = Price("CHF", 19.99F + static_cast<float>(index % 100), 129.5F),
      .rating = Rating(4.4F, 5, 1287),
      .sku = "SHIRT-OXFORD-" + number,
      .subtitle = "Crème, longue manche",
      .url = page,
  });
}

}  // namespace

ProductFields makeProductFields(std::size_t variationCount) {
  const auto optionCount = static_cast<std::size_t>(std::ceil(std::sqrt(static_cast<double>(variationCount))));
  ProductFields fields{
      .attributes = {{"colour", "Colour", makeOptions("colour", optionCount)},
                     {"size", "Size", makeOptions("size", optionCount)}},
      .brandName = "Example Weavers",
      .currency = "CHF",
      .description = "A shirt",
      .locale = "de-CH",
      .name = "Oxford shirt",
      .sku = "SHIRT-OXFORD",
      .url = "https://shop.example/products/oxford-shirt",
  };
  for (std::size_t index = 0; index < variationCount; ++index) {
    fields.variations.push_back(makeVariation(index, fields.attributes[0].options()[index % optionCount].id(),
                                              fields.attributes[1].options()[index / optionCount].id()));
  }
  return fields;
}

}  // namespace corvane::benchmarks
