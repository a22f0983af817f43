#include "corvane/product/product_size.h"

#include <string_view>

namespace corvane {

std::size_t estimatedJsonSize(const Product& product) {
  constexpr std::size_t ofRecord = 1536;
  constexpr std::size_t aroundSku = std::string_view("\"\",").size();
  std::size_t size = ofRecord + product.description().size();
  for (const Variation& variation : product.variations()) {
    size += ofRecord;
    for (const VariationAttribute& attribute : variation.attributes()) {
      const auto* const skus = attribute.productOptions();
      if (skus != nullptr) size += skus->size() * (variation.sku().size() + aroundSku);
    }
  }
  return size;
}

}  // namespace corvane
