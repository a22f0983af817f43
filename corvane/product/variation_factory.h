/// Builds variations that have most of their values in common.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "corvane/export.h"
#include "corvane/product/variation.h"

namespace corvane {

/// Values for a variation, any of which may be left open.
struct VariationValues {
  std::optional<std::vector<ComparableVariationAttribute>> comparableAttributes{};
  std::optional<std::vector<Detail>> details{};
  std::optional<std::vector<std::string>> imageUrls{};
  std::optional<bool> inStock{};
  std::optional<std::string> name{};
  std::optional<Price> price{};
  std::optional<Rating> rating{};
  std::optional<std::string> subtitle{};
  std::optional<std::string> url{};
};

/// Holds default values for variations and fills in what a caller leaves out. The defaults may be changed at any time;
/// variations that were made before keep theirs.
///
/// Ownership: the host app's. Threads: any, one at a time.
class CORVANE_EXPORT VariationFactory {
 public:
  std::optional<std::vector<ComparableVariationAttribute>> comparableAttributes{};
  std::optional<std::vector<Detail>> details{};
  std::optional<std::vector<std::string>> imageUrls{};
  bool inStock = false;
  std::optional<std::string> name{};
  std::optional<Price> price{};
  std::optional<Rating> rating{};
  std::optional<std::string> subtitle{};
  std::optional<std::string> url{};

  /// A variation with the values given, and the factory's where a value is left open. The attributes are not compared
  /// with any product here. Throws `ProductSpecError` when image addresses, name or price are given by neither.
  [[nodiscard]] Variation createVariation(std::string sku, std::vector<VariationAttribute> attributes,
                                          VariationValues values = {}) const;
};

}  // namespace corvane
