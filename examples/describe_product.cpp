#include <corvane/platform/foundation/json_coding.h>
#include <corvane/product/product.h>
#include <corvane/product/product_spec_error.h>
#include <corvane/product/variation_factory.h>

#include <cstdio>

int main() try {
  const corvane::AttributeDefinition size("size", "Size", {{"S", "Small"}, {"M", "Medium"}});
  const corvane::AttributeDefinition color("color", "Colour", {{"white", "White"}, {"blue", "Sky blue"}});

  corvane::VariationFactory shirt;
  shirt.name = "Oxford shirt";
  shirt.price = corvane::Price::fromDecimal("EUR", "59.95", "79.95");
  shirt.imageUrls = {"https://shop.example.com/images/shirt-oxford.jpg"};
  shirt.details = {corvane::Detail::bullets({"Button-down collar", "Woven from long-staple cotton"})};
  shirt.comparableAttributes = {{"material", "Material", "100 % cotton"}};
  shirt.inStock = true;

  corvane::Product product({
      .attributes = {size, color},
      .currency = "EUR",
      .description = "A shirt that goes to the office and stays for dinner.",
      .locale = "en-GB",
      .name = "Oxford shirt",
      .variations = {shirt.createVariation("SHIRT-S-WHITE", {{"size", "S"}, {"color", "white"}}),
                     shirt.createVariation("SHIRT-M-WHITE", {{"size", "M"}, {"color", "white"}}),
                     shirt.createVariation("SHIRT-M-BLUE", {{"size", "M"}, {"color", "blue"}}, {.inStock = false})},
  });
  product.setDefaultVariationIndex(1);
  std::puts(corvane::encodeJson(product).c_str());
} catch (const corvane::InvalidDataError& error) {
  std::fprintf(stderr, "the product cannot be made: %s\n", error.what());
  return 1;
}
