#include "corvane/product/variation_factory.h"

#include "tests/support/product_samples.h"

namespace corvane {
namespace {

TEST(VariationFactory, TellsTheFirstMandatoryValueThatIsMissing) {
  VariationFactory factory;
  VariationValues given;
  const auto missing = [&] { return refusal([&] { static_cast<void>(factory.createVariation("A", {}, given)); }); };
  EXPECT_EQ(missing(), "type error: Missing mandatory property imageUrls");
  given.imageUrls.emplace();
  EXPECT_EQ(missing(), "type error: Missing mandatory property name");
  factory.name = "Lamp";
  EXPECT_EQ(missing(), "type error: Missing mandatory property price");
  given.price = Price("EUR", 1, std::nullopt);
  EXPECT_EQ(factory.createVariation("A", {}, given).price(), *given.price);
  factory.name = std::nullopt;
  EXPECT_EQ(missing(), "type error: Missing mandatory property name");
}

TEST(VariationFactory, GivenValuesComeBeforeItsOwn) {
  VariationFactory factory{.comparableAttributes = {{{"fabric", "Fabric", "wool"}}},
                           .details = {{Detail::paragraph("own")}},
                           .imageUrls = {{"own.png"}},
                           .inStock = true,
                           .name = "own name",
                           .price = Price("EUR", 1, 2.0F),
                           .rating = Rating(1, 2, 3),
                           .subtitle = "own subtitle",
                           .url = "own url"};
  const auto own = written(factory.createVariation("A", {{"size", "S"}}));
  EXPECT_EQ(own, nlohmann::json::parse(R"({
    "sku": "A", "attributes": [{"id": "size", "option": "S"}], "imageUrls": ["own.png"], "inStock": true,
    "comparableAttributes": [{"id": "fabric", "name": "Fabric", "option": "wool"}], "name": "own name",
    "details": [{"detailType": "PARAGRAPH", "detailContent": "own"}], "subtitle": "own subtitle", "url": "own url",
    "price": {"currency": "EUR", "current": 1, "original": 2}, "relatedProducts": [],
    "rating": {"rating": 1, "maxValue": 2, "numberOfRatings": 3},
    "meta": {"data": {"subtitle": "own subtitle", "rating": {"rating": 1, "maxValue": 2, "numberOfRatings": 3},
                      "specs": [{"name": "Fabric", "value": "wool"}]}}})"));

  // What is empty is given all the same.
  const Variation other = factory.createVariation("B", {},
                                                  {.comparableAttributes = {{}},
                                                   .details = {{}},
                                                   .imageUrls = {{}},
                                                   .inStock = false,
                                                   .name = "",
                                                   .price = Price("CHF", 0, std::nullopt),
                                                   .rating = Rating(0, 0, std::nullopt),
                                                   .subtitle = "",
                                                   .url = ""});
  EXPECT_EQ(other, Variation({.comparableAttributes = {{}},
                              .details = {{}},
                              .price = Price("CHF", 0, std::nullopt),
                              .rating = Rating(0, 0, std::nullopt),
                              .sku = "B",
                              .subtitle = "",
                              .url = ""}));

  factory.inStock = false;
  EXPECT_FALSE(factory.createVariation("A", {}).inStock());
  EXPECT_TRUE(factory.createVariation("A", {}, {.inStock = true}).inStock());
}

}  // namespace
}  // namespace corvane
