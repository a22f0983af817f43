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

bool hasUnknownDetail(const Product& product) {
  // Only what is unknown makes a record differ from itself.
  return !(product == Product(product));
}

TEST(ProductRoundTrip, ProductsAreReadBackAsTheyWere) {
  ProductGenerator generator;
  int comparedCount = 0;
  for (int round = 0; round < 300; ++round) {
    const Product product = generator.next();
    const std::string text = encodeJson(product);
    // Another reader has to find the text in order, too.
    ASSERT_TRUE(Json::accept(text)) << text;
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
