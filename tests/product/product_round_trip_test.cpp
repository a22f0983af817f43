#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using Json = nlohmann::json;

/// Makes products of every shape, the same ones in each run.
class ProductGenerator {
 public:
  Product next() {
    std::vector<AttributeDefinition> attributes;
    for (std::uint64_t count = below(4); attributes.size() < count;)
      attributes.push_back(definition(attributes.size()));
    std::vector<Variation> variations;
    const std::uint64_t most = attributes.empty() ? 1 : 12;
    for (std::uint64_t count = 1 + below(most); variations.size() < count;) variations.push_back(variation(attributes));
    return Product({.attributes = attributes,
                    .brandName = maybe(text()),
                    .currency = text(),
                    .description = text(),
                    .defaultVariationIndex = integer(),
                    .locale = text(),
                    .name = maybe(text()),
                    .sku = maybe(text()),
                    .url = maybe(text()),
                    .variations = variations});
  }

  float real() {
    while (true) {
      const auto number = std::bit_cast<float>(static_cast<std::uint32_t>(random_()));
      if (std::isfinite(number)) return number;
    }
  }

 private:
  std::uint64_t below(std::uint64_t limit) { return random_() % limit; }
  bool chance() { return below(2) == 0; }

  template <class Value>
  std::optional<Value> maybe(Value value) {
    return chance() ? std::optional<Value>(std::move(value)) : std::nullopt;
  }

  std::int64_t integer() { return static_cast<std::int64_t>(random_()) >> below(64); }

  std::string text() {
    static const std::vector<std::string> pieces = {
        "a",  "Z",      "\"",      "\\",     "\n",     std::string(1, '\0'), "\x1f",
        "</", "\u00e9", "e\u0301", "\u2028", "\u4e2d", "\U0001f457",         "plain text "};
    std::string made;
    for (std::uint64_t count = below(24); count > 0; --count) made += pieces[below(pieces.size())];
    return made;
  }

  template <class Make>
  auto list(Make make) {
    std::vector<std::invoke_result_t<Make>> made;
    for (std::uint64_t count = below(4); count > 0; --count) made.push_back(make());
    return made;
  }

  /// The index keeps identifiers apart; an accent is written in either way.
  std::string identifier(std::uint64_t index) { return (chance() ? "\u00e9" : "e\u0301") + std::to_string(index); }

  AttributeDefinition definition(std::uint64_t index) {
    Json json{{"id", identifier(index)}, {"options", Json::array()}};
    if (chance()) json["name"] = text();
    if (chance()) json["significant"] = chance();
    for (std::uint64_t option = 0; option < 4; ++option) {
      json["options"].push_back({{"id", identifier(option)}});
      if (chance()) json["options"].back()["name"] = text();
    }
    return readFrom<AttributeDefinition>(json);
  }

  Detail detail() {
    if (below(8) == 0) return Detail::unknown();
    return chance() ? Detail::paragraph(text()) : Detail::bullets(list([&] { return text(); }));
  }

  ComparableVariationAttribute comparable() {
    if (chance()) return {text(), maybe(text()), text()};
    return readFrom<ComparableVariationAttribute>({{"id", text()}, {"option", text()}});
  }

  Variation variation(const std::vector<AttributeDefinition>& attributes) {
    std::vector<VariationAttribute> values;
    for (std::uint64_t index = 0; index < attributes.size(); ++index) {
      if (below(4) != 0) values.emplace_back(identifier(index), identifier(below(4)));
    }
    return Variation({.attributes = values,
                      .comparableAttributes = maybe(list([&] { return comparable(); })),
                      .details = maybe(list([&] { return detail(); })),
                      .imageUrls = list([&] { return text(); }),
                      .inStock = chance(),
                      .name = text(),
                      .price = Price(text(), real(), maybe(real())),
                      .rating = maybe(Rating(real(), integer(), maybe(integer()))),
                      .sku = text(),
                      .subtitle = maybe(text()),
                      .url = maybe(text())});
  }

  std::mt19937_64 random_{20240229};  // NOLINT(cert-msc51-cpp): every run tests the same products
};

/// An object of the members that have a value.
Json objectOf(const std::vector<std::pair<std::string, Json>>& members) {
  Json object = Json::object();
  for (const auto& [key, value] : members) {
    if (!value.is_null()) object[key] = value;
  }
  return object;
}

template <class Value>
Json orNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

template <class Items, class Expected>
Json listOf(const Items& items, Expected expected) {
  Json list = Json::array();
  for (const auto& item : items) list.push_back(expected(item));
  return list;
}

std::string inOnePiece(std::string identifier) {
  if (identifier.starts_with("e\u0301")) identifier.replace(0, 3, "\u00e9");
  return identifier;
}

/// The SKUs of all variations that take a value, found the long way.
Json skusThatTake(const VariationAttribute& value, const Product& product) {
  Json skus = Json::array();
  for (const Variation& variation : product.variations()) {
    for (const VariationAttribute& other : variation.attributes()) {
      if (inOnePiece(other.id()) != inOnePiece(value.id()) ||
          inOnePiece(other.option()) != inOnePiece(value.option())) {
        continue;
      }
      skus.push_back(variation.sku());
      break;
    }
  }
  return skus;
}

Json expectedVariation(const Variation& variation, const Product& product) {
  Json points = Json::array();
  const auto expectedDetail = [&](const Detail& detail) {
    return detail.match(
        [&](const Detail::Bullets& bullets) {
          for (const std::string& point : bullets.points) points.push_back(point);
          return Json{{"detailType", "BULLETS"}, {"detailContent", bullets.points}};
        },
        [](const Detail::Paragraph& paragraph) {
          return Json{{"detailType", "PARAGRAPH"}, {"detailContent", paragraph.text}};
        },
        [](const Detail::Unknown&) { return Json::object(); });
  };
  Json specifications = Json::array();
  const auto expectedComparable = [&](const ComparableVariationAttribute& attribute) {
    if (attribute.name()) specifications.push_back({{"name", *attribute.name()}, {"value", attribute.option()}});
    return objectOf({{"id", attribute.id()}, {"name", orNull(attribute.name())}, {"option", attribute.option()}});
  };
  Json rating;
  if (const auto& given = variation.rating()) {
    rating = objectOf({{"rating", given->rating()},
                       {"maxValue", given->maxValue()},
                       {"numberOfRatings", orNull(given->numberOfRatings())}});
  }
  const auto& [comparable, details] = std::pair(variation.comparableAttributes(), variation.details());
  Json object = objectOf({{"attributes", listOf(variation.attributes(),
                                                [&](const VariationAttribute& value) {
                                                  return Json{{"id", value.id()},
                                                              {"option", value.option()},
                                                              {"productOptions", skusThatTake(value, product)}};
                                                })},
                          {"comparableAttributes", comparable ? listOf(*comparable, expectedComparable) : Json()},
                          {"details", details ? listOf(*details, expectedDetail) : Json()},
                          {"imageUrls", variation.imageUrls()},
                          {"inStock", variation.inStock()},
                          {"name", variation.name()},
                          {"price", objectOf({{"currency", variation.price().currency()},
                                              {"current", variation.price().current()},
                                              {"original", orNull(variation.price().original())}})},
                          {"rating", rating},
                          {"relatedProducts", Json::array()},
                          {"sku", variation.sku()},
                          {"subtitle", orNull(variation.subtitle())},
                          {"url", orNull(variation.url())}});
  object["meta"]["data"] = objectOf({{"subtitle", orNull(variation.subtitle())},
                                     {"uniqueSellingPoints", points.empty() ? Json() : points},
                                     {"rating", rating},
                                     {"specs", specifications.empty() ? Json() : specifications}});
  return object;
}

Json expectedProduct(const Product& product) {
  const auto definition = [](const AttributeDefinition& attribute) {
    return Json{{"id", attribute.id()},
                {"name", *attribute.name()},
                {"significant", *attribute.significant()},
                {"options", listOf(attribute.options(), [](const AttributeDefinitionOption& option) {
                   return objectOf({{"id", option.id()}, {"name", orNull(option.name())}});
                 })}};
  };
  return {{"currency", product.currency()},
          {"locale", product.locale()},
          {"vendor", "hydratable-product"},
          {"_schemaVersion", 4},
          {"product", objectOf({{"attributes", listOf(product.attributes(), definition)},
                                {"brandName", orNull(product.brandName())},
                                {"description", product.description()},
                                {"defaultVariationIndex", product.defaultVariationIndex()},
                                {"name", orNull(product.name())},
                                {"sku", orNull(product.sku())},
                                {"url", orNull(product.url())},
                                {"variations", listOf(product.variations(), [&](const Variation& variation) {
                                   return expectedVariation(variation, product);
                                 })}})}};
}

/// With every number that is not whole rounded to the floats that records hold.
Json rounded(Json json) {
  if (json.is_number_float()) return static_cast<float>(json.get<double>());
  if (json.is_structured()) {
    for (Json& child : json) child = rounded(std::move(child));
  }
  return json;
}

bool hasUnknownDetail(const Product& product) {
  // Only what is unknown makes a record differ from itself.
  return !(product == Product(product));
}

TEST(ProductRoundTrip, ProductsAreWrittenAsExpectedAndReadBack) {
  ProductGenerator generator;
  int comparedCount = 0;
  for (int round = 0; round < 300; ++round) {
    const Product product = generator.next();
    const std::string text = encodeJson(product);
    const Json json = Json::parse(text);
    ASSERT_EQ(rounded(json), expectedProduct(product)) << text;
    // A detail of an unknown kind leaves nothing behind that could be read.
    if (hasUnknownDetail(product)) continue;
    ++comparedCount;
    ASSERT_TRUE(decodeJson<Product>(text) == product) << text;
  }
  EXPECT_GT(comparedCount, 100);
}

TEST(ProductRoundTrip, FloatsKeepEveryBit) {
  using Limits = std::numeric_limits<float>;
  // The last two are neighbours whose shortest decimals lie close to the middle between them.
  std::vector<float> numbers = {-0.0F,
                                0.1F,
                                16777216.0F,
                                9999999.0F,
                                1e-6F,
                                9.9e-7F,
                                Limits::max(),
                                Limits::min(),
                                Limits::denorm_min(),
                                std::bit_cast<float>(0x15AE43FEU),
                                std::bit_cast<float>(0x15AE43FDU)};
  ProductGenerator generator;
  while (numbers.size() < 5000) numbers.push_back(generator.real());
  for (const float number : numbers) {
    const auto read = decodeJson<Price>(encodeJson(Price("EUR", number, number)));
    EXPECT_EQ(std::bit_cast<std::uint32_t>(read.current()), std::bit_cast<std::uint32_t>(number)) << number;
  }
  EXPECT_EQ(encodeJson(Price("", 0.1F, 19.99F)), R"({"currency":"","current":0.1,"original":19.99})")
      << "a price must not show the digits of a wider type";
}

}  // namespace
}  // namespace corvane
