/// What makes a product consistent, and what is derived from its parts.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "corvane/product/product.h"

namespace corvane {

/// The defined values by number: which ones the variations take, in the order of the variations and their attributes,
/// and how often each value is taken.
struct TakenValues {
  std::vector<std::uint32_t> values{};
  std::vector<std::size_t> counts{};
};

/// The single checks; each throws `ProductSpecError` at the first contradiction. The time they take grows with the
/// number of variations times that of their attributes.
class ProductChecks {
 public:
  /// No option of a definition occurs twice.
  static void checkOptions(const AttributeDefinition& definition);
  /// No definition occurs twice; settles which of them are significant.
  static void checkAttributeDefinitions(std::vector<AttributeDefinition>& definitions);
  /// Several variations need an attribute that tells them apart.
  static void checkCounts(const std::vector<AttributeDefinition>& definitions,
                          const std::vector<Variation>& variations);
  /// Every value that a variation takes is defined.
  [[nodiscard]] static TakenValues checkVariations(const std::vector<AttributeDefinition>& definitions,
                                                   const std::vector<Variation>& variations);
  /// Gives each variation attribute the SKUs of all variations that share its value.
  static void linkProductOptions(std::vector<Variation>& variations, const TakenValues& taken);
};

}  // namespace corvane
