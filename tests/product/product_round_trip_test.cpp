#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <type_traits>

#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using Json = nlohmann::json;

/// Everything that a product may have; identifiers with an accent in either form.
constexpr std::string_view everything = R"({
  "currency": "", "locale": "", "_schemaVersion": 4,
  "product": {
    "attributes": [{"id": "\u00e9", "name": "", "significant": true, "options": [{"id": "1", "name": ""}, {"id": "2"}]},
                   {"id": "e", "name": "", "significant": false, "options": [{"id": "e\u0301", "name": ""}]}],
    "brandName": "", "description": "", "defaultVariationIndex": 0, "name": "", "sku": "", "url": "",
    "variations": [
      {"attributes": [{"id": "e\u0301", "option": "1"}, {"id": "e", "option": "\u00e9"}],
       "comparableAttributes": [{"id": "", "name": "", "option": ""}],
       "details": [{"detailType": "PARAGRAPH", "detailContent": ""}, {"detailType": "BULLETS", "detailContent": [""]}],
       "imageUrls": ["", ""], "inStock": false, "name": "", "price": {"currency": "", "current": 0.0, "original": 0.0},
       "rating": {"rating": 0.0, "maxValue": 0, "numberOfRatings": 0}, "sku": "", "subtitle": "", "url": ""},
      {"attributes": [{"id": "\u00e9", "option": "1"}], "imageUrls": [], "inStock": true, "name": "",
       "price": {"currency": "", "current": 0.0}, "sku": ""}]}})";

/// Fills in values and leaves out what may be missing, the same in each run.
class ProductGenerator {
 public:
  Json next() {
    Json product = Json::parse(everything);
    vary(product);
    return product;
  }
  float real() {
    while (true) {
      const auto number = std::bit_cast<float>(static_cast<std::uint32_t>(random_()));
      if (std::isfinite(number)) return number;
    }
  }

 private:
  bool chance() { return random_() % 2 == 0; }
  std::string text() {
    static const std::vector<std::string> pieces = {
        "a",  "Z",      "\"",      "\\",     "\n",     std::string(1, '\0'), "\x1f",
        "</", "\u00e9", "e\u0301", "\u2028", "\u4e2d", "\U0001f457",         "plain text "};
    std::string made;
    for (std::uint64_t count = random_() % 24; count > 0; --count) made += pieces[random_() % pieces.size()];
    return made;
  }
  void vary(Json& value) {
    if (value == "") value = text();
    if (value == 0.0 && value.is_number_float()) value = real();
    if (value.is_number_integer() && value == 0) value = static_cast<std::int64_t>(random_()) >> random_() % 64;
    if (value.is_object()) {
      for (const std::string key : {"brandName", "comparableAttributes", "details", "numberOfRatings", "original",
                                    "rating", "significant", "subtitle", "url"}) {
        const bool isRequired = key == "rating" && value.contains("maxValue");
        if (value.contains(key) && !isRequired && chance()) value.erase(key);
      }
    }
    if (value.is_structured()) std::ranges::for_each(value, [this](Json& part) { vary(part); });
  }

  std::mt19937_64 random_{20240229};  // NOLINT(cert-msc51-cpp): every run tests the same products
};

TEST(ProductRoundTrip, ProductsAreReadBackAsTheyWere) {
  ProductGenerator generator;
  for (int round = 0; round < 300; ++round) {
    const auto product = readFrom<Product>(generator.next());
    const std::string text = encodeJson(product);
    // Another reader has to find the text in order, too.
    ASSERT_TRUE(Json::accept(text)) << text;
    ASSERT_TRUE(decodeJson<Product>(text) == product) << text;
  }
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
