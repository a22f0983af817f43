// Any bytes as the JSON of a product: what is accepted must come out as JSON that is accepted again and stays the same.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/product/product.h"
#include "fuzz/require.h"

namespace {

using namespace corvane;

std::optional<Product> decode(std::string_view text) {
  try {
    return decodeJson<Product>(text);
  } catch (const InvalidDataError&) {
  }
  return std::nullopt;
}

/// What cannot be known is not written, and then not read either.
bool losesDetails(const Product& product) {
  return std::ranges::any_of(product.variations(), [](const Variation& variation) {
    return variation.details() && std::ranges::any_of(*variation.details(), [](const Detail& detail) {
             return std::holds_alternative<Detail::Unknown>(detail.value());
           });
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto product = decode({reinterpret_cast<const char*>(data), size});
  if (!product || product->variations().empty()) return 0;
  const std::string text = encodeJson(*product);
  const auto again = decode(text);
  require(again.has_value());
  const std::string textAgain = encodeJson(*again);
  require(losesDetails(*product) || (*again == *product && textAgain == text));
  const auto third = decode(textAgain);
  require(third.has_value() && encodeJson(*third) == textAgain);
  return 0;
}
