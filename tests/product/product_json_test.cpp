#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <limits>
#include <random>
#include <regex>
#include <sstream>
#include <variant>

#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using Kind = DecodingError::Kind;
using Json = nlohmann::json;

/// A product that uses everything, written by hand.
constexpr std::string_view lampJson = R"({
  "currency": "CHF", "locale": "fr-CH", "vendor": "hydratable-product", "_schemaVersion": 4,
  "product": {
    "attributes": [{"id": "shade", "name": "Shade", "significant": true,
                    "options": [{"id": "milk", "name": "milk"}, {"id": "smoke", "name": "Smoked glass"}]}],
    "brandName": "Lumen", "description": "A lamp", "defaultVariationIndex": 7, "name": "Lamp", "sku": "L",
    "url": "https://shop.example/l",
    "variations": [
      {"attributes": [{"id": "shade", "option": "milk", "productOptions": ["L-1"]}],
       "comparableAttributes": [{"id": "w", "name": "w", "option": "5 W"}, {"id": "h", "name": "Height", "option": "1 m"}],
       "details": [{"detailType": "PARAGRAPH", "detailContent": "Bright."},
                   {"detailType": "BULLETS", "detailContent": ["x", "y"]},
                   {"detailType": "BULLETS", "detailContent": ["z"]}],
       "imageUrls": ["a.png", "b.png"], "inStock": false, "name": "Milk lamp",
       "price": {"currency": "CHF", "current": 12.5, "original": 20},
       "rating": {"rating": 4.5, "maxValue": 5, "numberOfRatings": 12},
       "relatedProducts": [], "sku": "L-1", "subtitle": "warm", "url": "https://shop.example/l-1",
       "meta": {"data": {"subtitle": "warm", "uniqueSellingPoints": ["x", "y", "z"],
                         "rating": {"rating": 4.5, "maxValue": 5, "numberOfRatings": 12},
                         "specs": [{"name": "w", "value": "5 W"}, {"name": "Height", "value": "1 m"}]}}},
      {"attributes": [{"id": "shade", "option": "smoke", "productOptions": ["L-2"]}],
       "imageUrls": [], "inStock": true, "name": "Smoke lamp", "price": {"currency": "CHF", "current": 0.25},
       "relatedProducts": [], "sku": "L-2", "meta": {"data": {}}}]}})";

Product lamp() {
  auto smoke = plainFields("L-2", {{"shade", "smoke"}});
  smoke.imageUrls = {};
  smoke.name = "Smoke lamp";
  smoke.price = Price("CHF", 0.25F, std::nullopt);
  const Variation milk(
      {.attributes = {{"shade", "milk"}},
       .comparableAttributes = {{{"w", std::nullopt, "5 W"}, {"h", "Height", "1 m"}}},
       .details = {{Detail::paragraph("Bright."), Detail::bullets({"x", "y"}), Detail::bullets({"z"})}},
       .imageUrls = {"a.png", "b.png"},
       .inStock = false,
       .name = "Milk lamp",
       .price = Price("CHF", 12.5F, 20.0F),
       .rating = Rating(4.5F, 5, 12),
       .sku = "L-1",
       .subtitle = "warm",
       .url = "https://shop.example/l-1"});
  return Product(
      {.attributes = {AttributeDefinition("shade", "Shade", {{"milk", std::nullopt}, {"smoke", "Smoked glass"}})},
       .brandName = "Lumen",
       .currency = "CHF",
       .description = "A lamp",
       .defaultVariationIndex = 7,
       .locale = "fr-CH",
       .name = "Lamp",
       .sku = "L",
       .url = "https://shop.example/l",
       .variations = {milk, Variation(smoke)}});
}

/// The lamp with the value at a place replaced, or left out.
std::string lampWith(const Json::json_pointer& place, const std::optional<Json>& value) {
  Json json = Json::parse(lampJson);
  if (value) {
    json[place] = *value;
  } else {
    json[place.parent_pointer()].erase(place.back());
  }
  return json.dump();
}

Product readLamp(std::string_view place, const std::optional<Json>& value) {
  return decodeJson<Product>(lampWith(Json::json_pointer(std::string(place)), value));
}

template <class Record>
void expectForm(const Record& record, std::string_view json) {
  EXPECT_EQ(written(record), Json::parse(json));
  EXPECT_EQ(decodeJson<Record>(json), record) << json;
}

TEST(ProductJson, ProductsHaveTheFormThatThePageReads) {
  expectForm(lamp(), lampJson);
  auto bare = shirtFields();
  bare.variations.resize(1, bare.variations.front());
  EXPECT_EQ(written(Product(bare))["product"].size(), 4U) << "what is not there must not be written as null";
}

TEST(ProductJson, ReadingAddsNoNamesToOptionsAndComparableAttributes) {
  for (const std::string_view name : {"", R"(,"name":null)"}) {
    const std::string json = R"({"id":"a","option":"b")" + std::string(name) + "}";
    EXPECT_EQ(decodeJson<ComparableVariationAttribute>(json).name(), std::nullopt);
    EXPECT_EQ(written(decodeJson<AttributeDefinitionOption>(json)), Json::parse(R"({"id":"a"})"));
  }
  const auto definition = decodeJson<AttributeDefinition>(R"({"id":"a","options":[{"id":"b"}]})");
  EXPECT_EQ(written(definition), Json::parse(R"({"id":"a","name":"a","options":[{"id":"b"}]})"));
}

TEST(ProductJson, OnlyARecordOfItsOwnKeepsTheSkusThatItWasReadWith) {
  const std::string_view json = R"({"id":"shade","option":"milk","productOptions":["x","y"]})";
  const auto product = readLamp("/product/variations/0/attributes/0/productOptions", Json{"x", "y"});
  EXPECT_EQ(*product.variations()[0].attributes()[0].productOptions(), std::vector<std::string>{"L-1"});
  const auto record = decodeJson<VariationAttribute>(json);
  ASSERT_NE(record.productOptions(), nullptr);
  EXPECT_EQ(*record.productOptions(), (std::vector<std::string>{"x", "y"}));
  EXPECT_EQ(written(record), Json::parse(json));
}

TEST(ProductJson, MetaDataHoldsOnlyWhatThereIs) {
  using Comparables = std::vector<ComparableVariationAttribute>;
  const auto nameless = decodeJson<ComparableVariationAttribute>(R"({"id":"a","option":"b"})");
  const auto metaOf = [](const std::optional<std::vector<Detail>>& details, const Comparables& comparable) {
    Variation variation = plainVariation("A", {});
    variation.setDetails(details);
    if (!comparable.empty()) variation.setComparableAttributes(comparable);
    const Json json = written(variation);
    EXPECT_EQ(json["relatedProducts"], Json::array());
    EXPECT_EQ(json.contains("details"), details.has_value());
    return json["meta"];
  };
  EXPECT_EQ(metaOf(std::nullopt, {}), Json::parse(R"({"data":{}})"));
  EXPECT_EQ(metaOf({{}}, {}), Json::parse(R"({"data":{}})"));
  EXPECT_EQ(metaOf({{Detail::paragraph("p"), Detail::unknown(), Detail::bullets({})}}, {nameless}),
            Json::parse(R"({"data":{}})"));
  EXPECT_EQ(metaOf({{Detail::bullets({}), Detail::unknown(), Detail::bullets({"\"x\""})}}, {nameless, {"c", "", "d"}}),
            Json::parse(R"({"data":{"uniqueSellingPoints":["\"x\""],"specs":[{"name":"","value":"d"}]}})"));
}

/// A place in a document, as errors write it.
std::string pathOf(const std::string& place) {
  const std::string indexed = std::regex_replace(place, std::regex("/([0-9]+)"), "[$1]");
  return indexed.empty() ? "" : std::regex_replace(indexed.substr(1), std::regex("/"), ".");
}

std::string typeNameOf(const Json& value) {
  if (value.is_array()) return "Array";
  if (value.is_object()) return "Object";
  if (value.is_string()) return "String";
  if (value.is_boolean()) return "Bool";
  return value.is_number_float() ? "Float" : "Int";
}

TEST(ProductJson, EveryRequiredMemberIsMissedWithItsPath) {
  const Json whole = Json::parse(lampJson);
  std::istringstream places(R"(
      /_schemaVersion /currency /locale /product /product/attributes /product/description /product/variations
      /product/defaultVariationIndex /product/attributes/0/id /product/attributes/0/options
      /product/attributes/0/options/1/id /product/variations/1/attributes /product/variations/1/imageUrls
      /product/variations/1/inStock /product/variations/1/name /product/variations/1/price /product/variations/1/sku
      /product/variations/1/price/currency /product/variations/1/price/current
      /product/variations/0/attributes/0/id /product/variations/0/attributes/0/option)");
  for (std::string place; places >> place;) {
    const Json::json_pointer pointer(place);
    const Json& value = whole[pointer];
    const std::string wanted = typeNameOf(value) + " at " + pathOf(place);
    const auto whyNot = [&](const std::optional<Json>& given) {
      return whyUnreadable<Product>(lampWith(pointer, given));
    };
    EXPECT_EQ(whyNot(std::nullopt),
              "keyNotFound " + pointer.back() + " at " + pathOf(pointer.parent_pointer().to_string()));
    EXPECT_EQ(whyNot(Json()), "valueNotFound " + wanted);
    EXPECT_EQ(whyNot(value.is_array() ? Json::object() : Json::array()), "typeMismatch " + wanted);
  }
}

TEST(ProductJson, OptionalMembersMayBeNullButNotOfAnotherType) {
  for (const auto& [place, wrong, reason] : std::vector<std::tuple<std::string, Json, std::string>>{
           {"/product/attributes/0/options/1/name", 1, "String at product.attributes[0].options[1].name"},
           {"/product/variations/0/price/original", "20", "Float at product.variations[0].price.original"},
           {"/product/variations/0/attributes/0/productOptions", Json{1},
            "String at product.variations[0].attributes[0].productOptions[0]"}}) {
    EXPECT_EQ(whyUnreadable<Product>(lampWith(Json::json_pointer(place), wrong)), "typeMismatch " + reason);
    EXPECT_NO_THROW(readLamp(place, Json())) << place;
    EXPECT_NO_THROW(readLamp(place, std::nullopt)) << place;
  }
  EXPECT_EQ(decodeJson<Rating>(R"({"rating":1,"maxValue":2,"numberOfRatings":null})").numberOfRatings(), std::nullopt);
  EXPECT_EQ(decodingError<Rating>(R"({"rating":1,"maxValue":2,"numberOfRatings":"3"})").kind(), Kind::typeMismatch);
}

TEST(ProductJson, MembersThatDoNotMatterAreLeftOutWhenUnreadable) {
  Product nameless = lamp();
  nameless.setBrandName(std::nullopt);
  nameless.setName(std::nullopt);
  nameless.setSku(std::nullopt);
  nameless.setUrl(std::nullopt);
  for (const Json& value : {Json(), Json(1), Json::array({"Lamp"})}) {
    Json json = Json::parse(lampJson);
    for (const char* key : {"brandName", "name", "sku", "url"}) json["product"][key] = value;
    EXPECT_EQ(readFrom<Product>(json), nameless) << value;
  }
  for (const auto& [key, values] : std::initializer_list<std::pair<std::string, std::string_view>>{
           {"comparableAttributes",
            R"([null, 1, {}, [{"id":"a","option":"b"},{"id":"a"}], [{"id":"","name":1,"option":""}]])"},
           {"details", R"([null, "x", [{"detailType":"BULLETS","detailContent":["a"]},{"detailContent":["a"]}],
                           [{"detailType":"BULLETS","detailContent":"a"}], [{"detailType":"PARAGRAPH"}], [7]])"},
           {"rating", R"([null, 4, {"rating":4}, {"rating":4,"maxValue":5.5}, {"rating":1e39,"maxValue":5}])"},
           {"subtitle", R"([null, 1, ["warm"]])"},
           {"url", R"([null, false])"}}) {
    for (const Json& value : Json::parse(values)) {
      const Json expected = written(readLamp("/product/variations/0/" + key, std::nullopt));
      EXPECT_FALSE(expected["product"]["variations"][0].contains(key));
      EXPECT_EQ(written(readLamp("/product/variations/0/" + key, value)), expected) << key << value;
    }
  }
  EXPECT_EQ(readLamp("/product/attributes/0/name", 5).attributes()[0].name(), "shade");
  for (const Json& value : {Json("true"), Json(1), Json()}) {
    const Json definition{{"id", "a"}, {"significant", value}, {"options", Json::array()}};
    EXPECT_EQ(readFrom<AttributeDefinition>(definition).significant(), std::nullopt) << value;
  }
}

TEST(ProductJson, OnlyTheSchemaThatIsKnownIsRead) {
  for (const std::string_view other : {"5", "3", "-4", "0"}) {
    // An unknown schema is told before anything else that may be wrong in it.
    const auto error = decodingError<Product>(R"({"product":7,"_schemaVersion":)" + std::string(other) + "}");
    EXPECT_EQ(error.kind(), Kind::dataCorrupted);
    EXPECT_EQ(error.debugDescription(), "product spec version " + std::string(other) + " not supported");
    EXPECT_TRUE(error.codingPath().empty());
  }
  EXPECT_EQ(readLamp("/_schemaVersion", 4.0), lamp());
  EXPECT_EQ(decodingError<Product>(R"({"_schemaVersion":4.5})").debugDescription(), "The number does not fit in Int.");
  for (const std::optional<Json>& vendor : {std::optional<Json>(), std::optional<Json>(3)}) {
    EXPECT_EQ(written(readLamp("/vendor", vendor)), Json::parse(lampJson));
  }
}

TEST(ProductJson, DetailsOfAnotherKindAreUnknown) {
  for (const std::string_view json : {R"({"detailType":"bullets","detailContent":["a"]})", R"({"detailType":"VIDEO"})",
                                      R"({"detailType":"paragraph","detailContent":{"a":[null]}})",
                                      R"({"detailType":""})", R"({"detailType":"BULLETS "})"}) {
    const auto detail = decodeJson<Detail>(json);
    EXPECT_TRUE(std::holds_alternative<Detail::Unknown>(detail.value())) << json;
    EXPECT_FALSE(detail == Detail::unknown()) << "what is unknown cannot be told to be the same";
  }
  const auto whyNot = &whyUnreadable<Detail>;
  EXPECT_EQ(whyNot(R"({"detailContent":"a"})"), "keyNotFound detailType at ");
  EXPECT_EQ(whyNot(R"({"detailType":1})"), "typeMismatch String at detailType");
  EXPECT_EQ(whyNot(R"({"detailType":"BULLETS"})"), "keyNotFound detailContent at ");
  EXPECT_EQ(whyNot(R"({"detailType":"BULLETS","detailContent":["a",1]})"), "typeMismatch String at detailContent[1]");
  EXPECT_EQ(whyNot(R"({"detailType":"PARAGRAPH","detailContent":["a"]})"), "typeMismatch String at detailContent");
  EXPECT_EQ(whyNot(R"({"detailType":"PARAGRAPH","detailContent":null})"), "valueNotFound String at detailContent");
  EXPECT_FALSE(Detail::bullets({"a"}) == Detail::paragraph("a"));
  EXPECT_FALSE(Detail::bullets({}) == Detail::unknown());
}

TEST(ProductJson, OfMembersThatOccurTwiceTheLastCounts) {
  EXPECT_EQ(decodeJson<Price>(R"({"current":"x","currency":"A","current":1,"currency":"B","current":2})"),
            Price("B", 2, std::nullopt));
  EXPECT_EQ(decodeJson<Price>(R"({"original":1,"current":2,"\u0063urrent":3,"currency":"B","original":null})"),
            Price("B", 3, std::nullopt));
  EXPECT_EQ(decodeJson<Detail>(
                R"({"detailContent":"a","detailType":"BULLETS","detailType":"PARAGRAPH","detailContent":"b"})"),
            Detail::paragraph("b"));
}

TEST(ProductJson, NumbersThatDoNotFitAreRefusedWhereTheyAreRead) {
  EXPECT_EQ(decodeJson<Rating>(R"({"rating":3,"maxValue":5.0,"numberOfRatings":2e2})"), Rating(3, 5, 200));
  for (const std::string_view number :
       {"9223372036854775808", "-9223372036854775809", "1e30", "-1e400", "0.5", "123456789012345678901234567890"}) {
    EXPECT_EQ(whyUnreadable<Rating>(R"({"rating":1,"maxValue":)" + std::string(number) + "}"),
              "dataCorrupted Int at maxValue");
  }
  for (const std::string_view number : {"3.5e38", "-1e300", "1e400"}) {
    EXPECT_EQ(whyUnreadable<Price>(R"({"currency":"","current":)" + std::string(number) + "}"),
              "dataCorrupted Float at current");
  }
  EXPECT_EQ(decodeJson<Price>(R"({"currency":"","current":18446744073709551616})").current(), 0x1p64F);
  EXPECT_EQ(decodeJson<Price>(R"({"currency":"","current":1e-300})").current(), 0.0F);
}

TEST(ProductJson, FloatsKeepEveryBit) {
  using Limits = std::numeric_limits<float>;
  // The last two are neighbours whose shortest decimals lie close to the middle between them.
  std::vector<float> numbers = {-0.0F,
                                1e-6F,
                                Limits::max(),
                                Limits::denorm_min(),
                                std::bit_cast<float>(0x15AE43FEU),
                                std::bit_cast<float>(0x15AE43FDU)};
  std::mt19937 random(20240229);  // NOLINT(cert-msc51-cpp): every run tests the same numbers
  while (numbers.size() < 5000) {
    const auto number = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (std::isfinite(number)) numbers.push_back(number);
  }
  for (const float number : numbers) {
    const auto read = decodeJson<Price>(encodeJson(Price("EUR", number, number)));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(read.current()), std::bit_cast<std::uint32_t>(number)) << number;
  }
  EXPECT_EQ(encodeJson(Price("", 0.1F, 19.99F)), R"({"currency":"","current":0.1,"original":19.99})")
      << "a price must not show the digits of a wider type";
}

TEST(ProductJson, AmountsComeOutAsTheyWereGivenOrAreRefused) {
  const auto written = [](const Price& price) { return Json::parse(encodeJson(price))["current"]; };
  for (const auto* same : {"59.95", "0.01", "-0.5", "131071.99", "16777216.0", "0.0"}) {
    EXPECT_EQ(written(Price::fromDecimal("EUR", same)), Json::parse(same));
  }
  EXPECT_EQ(Price::fromDecimal("EUR", "007.50", "10"), Price("EUR", 7.5F, 10.0F));
  EXPECT_EQ(Price::fromMinorUnits("EUR", 2, 5995, -5), Price("EUR", 59.95F, -0.05F));
  EXPECT_EQ(Price::fromMinorUnits("JPY", 0, 20000000), Price("JPY", 2e7F, std::nullopt));
  for (const auto* bad : {"", "-", "1,5", ".5", "1.", "+1", " 1", "1e3", "nan", "131072.01", "16777217"}) {
    EXPECT_THROW(written(Price::fromDecimal("EUR", bad)), InvalidDataError) << bad;
  }
  EXPECT_THROW(written(Price::fromDecimal("EUR", "1", "x")), DecodingError);
  EXPECT_THROW(written(Price::fromMinorUnits("EUR", 10, 1)), DecodingError);
  EXPECT_THROW(written(Price::fromMinorUnits("EUR", 2, std::numeric_limits<std::int64_t>::min())), DecodingError);
  EXPECT_THROW(Product({.variations = {plainVariation("A", {}), plainVariation("B", {})}}), InvalidDataError);
}

TEST(ProductJson, WhatHasNoJsonFormIsRefusedWithItsPath) {
  ProductFields empty = shirtFields();
  empty.variations.clear();
  const auto noVariations = encodingError(Product(empty));
  EXPECT_EQ(noVariations.debugDescription(), "Need at least one(1) variation");
  EXPECT_TRUE(noVariations.codingPath().empty());

  constexpr float infinity = std::numeric_limits<float>::infinity();
  for (const float number : {infinity, -infinity, std::nanf("")}) {
    auto fields = plainFields("A", {});
    fields.price = Price("EUR", number, std::nullopt);
    EXPECT_EQ(toText(encodingError(Variation(fields)).codingPath()), "price.current");
    fields.price = Price("EUR", 1, number);
    EXPECT_EQ(toText(encodingError(Variation(fields)).codingPath()), "price.original");
  }
  ProductFields shirt = shirtFields();
  for (const char* bad : {"\xff", "\"plain\xc3", "\xff\"", "long enough for a word\n and another \xed\xa0\x80"}) {
    auto fields = plainFields("A", {});
    fields.details = {{Detail::unknown(), Detail::bullets({"a", bad})}};
    shirt.variations[1] = Variation(fields);
    EXPECT_EQ(toText(encodingError(Product(shirt)).codingPath()), "product.variations[1].details[1].detailContent[1]");
  }
  shirt.variations[1] = plainVariation("\xc3", {{"color", "red"}});
  EXPECT_EQ(toText(encodingError(Product(shirt)).codingPath()),
            "product.variations[0].attributes[0].productOptions[1]");
}

}  // namespace
}  // namespace corvane
