#include "corvane/product/product_checks.h"

#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using Json = nlohmann::json;
using Texts = std::vector<std::string>;

// The same letter in one piece and in two, and the sign for kelvin, which is the letter K.
const std::string composed = "caf\u00e9";
const std::string decomposed = "cafe\u0301";
const std::string kelvin = "\u212a";

ProductFields productOf(std::vector<AttributeDefinition> attributes, std::vector<Variation> variations) {
  return {.attributes = std::move(attributes), .variations = std::move(variations)};
}

std::string refusalOf(const ProductFields& fields) {
  return refusal([&] { static_cast<void>(Product(fields)); });
}

Texts skus(const Product& product, std::size_t variation, std::size_t attribute) {
  const auto* options = product.variations()[variation].attributes()[attribute].productOptions();
  return options != nullptr ? *options : Texts{"not linked"};
}

const std::string tooFewVariations = "type error: Need at least one(1) variation";
const std::string tooFewAttributes = "type error: Need at least one(1) attribute if more than one(1) variation";

TEST(Product, DuplicateOptionsAreRefused) {
  EXPECT_EQ(refusal([] { definitionOf("size", {"s", "m", "l", "m", "s"}); }),
            "option twice: Option m defined multiple times for attribute size");
  EXPECT_EQ(refusal([] { definitionOf("bar", {composed, decomposed}); }),
            "option twice: Option " + decomposed + " defined multiple times for attribute bar");
  EXPECT_TRUE(refusal([] { definitionOf("unit", {"K", kelvin}); }).starts_with("option twice"));
  EXPECT_NO_THROW(definitionOf("size", {"m", "M", " m", "", "cafe", composed, "k", kelvin}));
}

TEST(Product, DuplicateAttributesAreRefused) {
  EXPECT_EQ(
      refusalOf(productOf({definitionOf("size", {}), definitionOf("color", {"a"}), definitionOf("color", {})}, {})),
      "attribute twice: Attribute color defined multiple times");
  EXPECT_EQ(refusalOf(productOf({definitionOf(decomposed, {}), definitionOf(composed, {})}, {})),
            "attribute twice: Attribute " + composed + " defined multiple times");
  EXPECT_NO_THROW(Product(productOf({definitionOf("color", {}), definitionOf("Color", {})}, {})));
}

TEST(Product, WhatVariationsUseMustBeDefined) {
  auto fields = shirtFields();
  fields.variations.push_back(plainVariation("A1", {{"color", "blue"}, {"fit", "slim"}, {"size", "XL"}}));
  fields.variations.push_back(plainVariation("A2", {{"color", "green"}}));
  EXPECT_EQ(refusalOf(fields), "undefined attribute: Variation A1 uses undefined attribute fit");
  fields.variations[3] = plainVariation("S-1", {{"size", "xl"}, {"fit", "slim"}});
  EXPECT_EQ(refusalOf(fields), "undefined option: Variation S-1 uses undefined option xl for size");
  fields.variations[3] = plainVariation("S-2", {{"size", "s"}});
  EXPECT_EQ(refusalOf(fields), "undefined option: Variation S-2 uses undefined option s for size");
  fields.variations[3] = plainVariation("S-3", {{"Size", "S"}});
  EXPECT_EQ(refusalOf(fields), "undefined attribute: Variation S-3 uses undefined attribute Size");
  fields.variations[3] = plainVariation("S-4", {{"size", "red"}});
  EXPECT_EQ(refusalOf(fields), "undefined option: Variation S-4 uses undefined option red for size");
}

TEST(Product, TheFirstContradictionIsTold) {
  const Variation undefined = plainVariation("A", {{"a", "b"}});
  const AttributeDefinition size = definitionOf("size", {});
  EXPECT_TRUE(refusalOf(productOf({size, size}, {undefined, undefined})).starts_with("attribute twice"));
  EXPECT_EQ(refusalOf(productOf({}, {undefined, undefined})), tooFewAttributes);
  EXPECT_TRUE(refusalOf(productOf({size}, {undefined, undefined})).starts_with("undefined attribute"));
  EXPECT_TRUE(refusalOf(productOf({}, {undefined})).starts_with("undefined attribute"));
  EXPECT_NO_THROW(Product(productOf({}, {})));
  EXPECT_NO_THROW(Product(productOf({}, {plainVariation("A", {})})));
  EXPECT_NO_THROW(Product(productOf({size}, {plainVariation("A", {}), plainVariation("A", {})})));
}

TEST(Product, ReplacedVariationsStayWhereTheyContradictTheAttributes) {
  Product shirt(shirtFields());
  const Product before = shirt;
  EXPECT_EQ(refusal([&] { shirt.setVariations({}); }), tooFewVariations);
  EXPECT_EQ(shirt, before);

  Product plain(productOf({}, {plainVariation("A", {})}));
  const Product plainBefore = plain;
  EXPECT_EQ(refusal([&] { plain.setVariations({plainVariation("B", {{"a", "b"}}), plainVariation("C", {})}); }),
            tooFewAttributes);
  EXPECT_EQ(plain, plainBefore);

  const std::vector<Variation> replaced = {plainVariation("new", {{"size", "M"}}),
                                           plainVariation("bad", {{"size", "XL"}})};
  EXPECT_EQ(refusal([&] { shirt.setVariations(replaced); }),
            "undefined option: Variation bad uses undefined option XL for size");
  EXPECT_EQ(shirt.variations(), replaced);
  EXPECT_EQ(shirt.variations()[0].attributes()[0].productOptions(), nullptr);
  EXPECT_EQ(before, Product(shirtFields())) << "copies must not see the change";

  shirt.setVariations({plainVariation("one", {{"size", "M"}}), before.variations()[1]});
  EXPECT_EQ(skus(shirt, 1, 0), Texts{"red-M"}) << "what the old product linked must not stay";
  EXPECT_EQ(skus(shirt, 0, 0), (Texts{"one", "red-M"}));
}

TEST(Product, WhateverIsSetIsWrittenAndCompared) {
  const Product shirt(shirtFields());
  const Variation& article = shirt.variations().front();
  const auto expectChange = [](auto changed, const auto& before, auto&& set) {
    EXPECT_EQ(changed, before);
    set(changed);
    EXPECT_NE(changed, before);
    EXPECT_NE(written(changed), written(before));
  };
  expectChange(shirt, shirt, [](Product& product) { product.setBrandName("b"); });
  expectChange(shirt, shirt, [](Product& product) { product.setDefaultVariationIndex(2); });
  expectChange(shirt, shirt, [](Product& product) { product.setName("n"); });
  expectChange(shirt, shirt, [](Product& product) { product.setSku("s"); });
  expectChange(shirt, shirt, [](Product& product) { product.setUrl("u"); });
  expectChange(article, article, [](Variation& variation) { variation.setComparableAttributes({{{"c", "n", "o"}}}); });
  expectChange(article, article, [](Variation& variation) { variation.setDetails({{Detail::paragraph("p")}}); });
  expectChange(article, article, [](Variation& variation) { variation.setRating(Rating(1, 2, 3)); });
  expectChange(article, article, [](Variation& variation) { variation.setSubtitle("s"); });
  expectChange(article.price(), article.price(), [](Price& price) { price.setOriginal(20.0F); });
  EXPECT_NE(article, plainVariation("red-S", {{"color", "red"}, {"size", "S"}})) << "its options are not shared";
  EXPECT_NE(VariationAttribute("a", "b"), VariationAttribute("a", "c"));
  EXPECT_NE(VariationAttribute("a", "b"), VariationAttribute("c", "b"));
  EXPECT_NE(Detail::paragraph("p"), Detail::bullets({}));
  EXPECT_NE(Detail::paragraph("p"), Detail::paragraph("q"));
  using Kind = ProductSpecError::Kind;
  EXPECT_EQ(ProductSpecError(Kind::typeError, "a"), ProductSpecError(Kind::typeError, "a"));
  EXPECT_NE(ProductSpecError(Kind::typeError, "a"), ProductSpecError(Kind::typeError, "b"));
  EXPECT_NE(ProductSpecError(Kind::typeError, "a"), ProductSpecError(Kind::undefinedOption, "a"));
}

TEST(Product, DefinitionsAreSignificantUnlessTheJsonDecides) {
  struct Row {
    std::string_view read;
    std::string_view settled;
  };
  for (const Row& row :
       {Row{"[null,null]", "[true,true]"}, Row{"[false,false]", "[true,true]"}, Row{"[false,null]", "[true,true]"},
        Row{"[true,null]", "[true,false]"}, Row{"[null,true]", "[false,true]"}, Row{"[false,true]", "[false,true]"}}) {
    const Json flags = Json::parse(row.read);
    Json json = written(Product(shirtFields()));
    for (std::size_t index = 0; index < 2; ++index) json["product"]["attributes"][index]["significant"] = flags[index];
    auto product = readFrom<Product>(json);
    const auto settled = [&] {
      return Json{product.attributes()[0].significant() == true, product.attributes()[1].significant() == true};
    };
    EXPECT_EQ(settled(), Json::parse(row.settled)) << row.read;
    EXPECT_TRUE(product.attributes()[0].significant() && product.attributes()[1].significant());
    product.setVariations({plainVariation("A", {})});
    EXPECT_EQ(settled(), Json::parse(row.settled)) << row.read;
  }
  // Definitions that another product has settled count as decided.
  const Product shirt(shirtFields());
  const Product reusing(productOf({definitionOf("new", {}), shirt.attributes()[0]}, {}));
  EXPECT_EQ(reusing.attributes()[0].significant(), false);
  EXPECT_EQ(definitionOf("new", {}).significant(), false);
}

TEST(Product, VariationsKnowWhichShareTheirValues) {
  const Product shirt(shirtFields());
  EXPECT_EQ(skus(shirt, 0, 0), (Texts{"red-S", "red-M"}));
  EXPECT_EQ(skus(shirt, 0, 1), (Texts{"red-S", "blue-S"}));
  EXPECT_EQ(skus(shirt, 1, 1), Texts{"red-M"});
  EXPECT_EQ(skus(shirt, 2, 0), Texts{"blue-S"});
  EXPECT_EQ(shirt.variations()[0].attributes()[0].productOptions(),
            shirt.variations()[1].attributes()[0].productOptions())
      << "a copy of the list for each variation would take room without bounds";

  // Values taken twice by one variation, SKUs that occur twice, and equal options of different attributes.
  const Product odd(productOf({definitionOf("a", {"1", "2"}), definitionOf("b", {"1"})},
                              {plainVariation("X", {{"a", "1"}, {"a", "2"}, {"a", "1"}}),
                               plainVariation("X", {{"b", "1"}, {"a", "1"}}), plainVariation("Y", {})}));
  EXPECT_EQ(skus(odd, 0, 0), (Texts{"X", "X"}));
  EXPECT_EQ(skus(odd, 0, 1), Texts{"X"});
  EXPECT_EQ(skus(odd, 0, 2), (Texts{"X", "X"}));
  EXPECT_EQ(skus(odd, 1, 0), Texts{"X"});
}

TEST(Product, IdentifiersAreTheSameHoweverTheirLettersAreComposed) {
  const Product product(
      productOf({definitionOf(composed, {"K", "k", "\u1e69"})},
                {plainVariation("1", {{decomposed, "K"}}), plainVariation("2", {{composed, kelvin}}),
                 plainVariation("3", {{composed, "k"}}), plainVariation("4", {{decomposed, "s\u0307\u0323"}}),
                 plainVariation("5", {{composed, "s\u0323\u0307"}})}));
  EXPECT_EQ(skus(product, 0, 0), (Texts{"1", "2"}));
  EXPECT_EQ(skus(product, 2, 0), Texts{"3"});
  EXPECT_EQ(skus(product, 3, 0), (Texts{"4", "5"}));
  EXPECT_EQ(product.variations()[1].attributes()[0].option(), kelvin) << "only the comparison is normalised";
}

TEST(Product, IdentifiersThatAreNotUtf8AreOnlyEqualToThemselves) {
  const std::string bad = "\xff\xfe";
  const std::string cut = "caf\xc3";
  const Product product(productOf({definitionOf(bad, {cut, bad, std::string("\xc3\0", 2)})},
                                  {plainVariation(bad, {{bad, cut}}), plainVariation(cut, {{bad, bad}})}));
  EXPECT_EQ(skus(product, 0, 0), Texts{bad});
  EXPECT_TRUE(refusal([&] { definitionOf("a", {bad, cut, bad}); }).starts_with("option twice"));
}

TEST(Product, ContradictionsInJsonAreErrorsOfReading) {
  const Json shirt = written(Product(shirtFields()));
  for (const auto& [place, value, path, description] :
       std::vector<std::tuple<std::string, Json, std::string, std::string>>{
           {"/product/variations/1/attributes/0/id", "fit", "", "Variation red-M uses undefined attribute fit"},
           {"/product/attributes/1/id", "color", "", "Attribute color defined multiple times"},
           {"/product/attributes/1/options/1/id", "S", "product.attributes[1]",
            "Option S defined multiple times for attribute size"}}) {
    Json json = shirt;
    json[Json::json_pointer(place)] = value;
    EXPECT_EQ(whyUnreadable<Product>(json.dump()), "typeMismatch VariationAttribute at " + path);
    EXPECT_EQ(decodingError<Product>(json.dump()).debugDescription(), description);
  }
  Json unreadable = shirt;
  unreadable["product"]["attributes"] = Json::array();
  EXPECT_EQ(refusal([&] { static_cast<void>(readFrom<Product>(unreadable)); }), tooFewAttributes);
  unreadable["product"]["variations"] = Json::array();
  EXPECT_TRUE(readFrom<Product>(unreadable).variations().empty());

  Json stale = shirt;
  stale["product"]["variations"][0]["attributes"][0]["productOptions"] = {"gone"};
  EXPECT_EQ(readFrom<Product>(stale), Product(shirtFields()));
}

}  // namespace
}  // namespace corvane
