#include "demo/shop/shop_products.h"

#include <array>
#include <exception>
#include <fstream>
#include <iterator>

#include "corvane/platform/foundation/json_coding.h"

namespace corvane::demo {

namespace {

constexpr std::array names{"shirt_oxford", "jeans_slim", "charger_usb", "gift_card"};

}  // namespace

std::expected<std::vector<Product>, std::string> readProducts(const std::filesystem::path& folder) {
  std::vector<Product> products;
  for (const std::string name : names) {
    const auto path = folder / (name + ".json");
    std::ifstream file(path, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    try {
      products.push_back(decodeJson<Product>(text));
    } catch (const std::exception& error) {
      return std::unexpected(path.string() + ": " + error.what());
    }
  }
  return products;
}

const Variation& firstShown(const Product& product) {
  const auto index = static_cast<std::size_t>(product.defaultVariationIndex());
  return product.variations().at(index < product.variations().size() ? index : 0);
}

}  // namespace corvane::demo
