#include "demo/shop/shop_products.h"

#include <array>
#include <exception>
#include <fstream>
#include <iterator>

#include "corvane/platform/foundation/json_coding.h"

namespace corvane::demo {

namespace {

constexpr std::array files{"shirt_oxford.json", "jeans_slim.json", "charger_usb.json", "gift_card.json"};

}  // namespace

std::expected<std::vector<Product>, std::string> readProducts(const std::filesystem::path& folder) {
  std::vector<Product> products;
  for (const char* const name : files) {
    std::ifstream file(folder / name, std::ios::binary);
    const std::string text(std::istreambuf_iterator<char>(file), {});
    try {
      products.push_back(decodeJson<Product>(text));
    } catch (const std::exception& error) {
      return std::unexpected((folder / name).string() + ": " + error.what());
    }
  }
  return products;
}

const Variation& firstShown(const Product& product) {
  const auto index = static_cast<std::size_t>(product.defaultVariationIndex());
  return product.variations().at(index < product.variations().size() ? index : 0);
}

}  // namespace corvane::demo
