/// A product that is shown to a customer in a call.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "corvane/export.h"
#include "corvane/product/attribute_definition.h"
#include "corvane/product/variation.h"

namespace corvane {

/// What a product is made from; see `Product` for the meaning of each.
struct ProductFields {
  std::vector<AttributeDefinition> attributes{};
  std::optional<std::string> brandName{};
  std::string currency{};
  std::string description{};
  std::int64_t defaultVariationIndex = 0;
  std::string locale{};
  std::optional<std::string> name{};
  std::optional<std::string> sku{};
  std::optional<std::string> url{};
  std::vector<Variation> variations{};

  bool operator==(const ProductFields&) const = default;
};

/// A product with the attributes along which it varies and its variations.
///
/// A product is consistent when it has been built. Its variations use only the attributes and options that it defines,
/// and identifiers occur once. Each variation attribute lists the variations that share its value. Identifiers are
/// compared by Unicode canonical equivalence; upper and lower case differ.
///
/// `encodeJson` and `decodeJson` take it. Encoding a product without variations throws `EncodingError`.
class CORVANE_EXPORT Product {
 public:
  /// Throws `ProductSpecError` when the fields contradict each other. A product without variations can be built, but
  /// not encoded.
  explicit Product(ProductFields fields);

  [[nodiscard]] const std::string& currency() const CORVANE_LIFETIMEBOUND { return fields_.currency; }
  [[nodiscard]] const std::string& locale() const CORVANE_LIFETIMEBOUND { return fields_.locale; }
  [[nodiscard]] const std::vector<AttributeDefinition>& attributes() const CORVANE_LIFETIMEBOUND {
    return fields_.attributes;
  }
  [[nodiscard]] const std::optional<std::string>& brandName() const CORVANE_LIFETIMEBOUND { return fields_.brandName; }
  void setBrandName(std::optional<std::string> brandName) { fields_.brandName = std::move(brandName); }
  [[nodiscard]] const std::string& description() const CORVANE_LIFETIMEBOUND { return fields_.description; }
  /// Which variation the page shows first. It is passed on as it is, even where there is no such variation.
  [[nodiscard]] std::int64_t defaultVariationIndex() const { return fields_.defaultVariationIndex; }
  void setDefaultVariationIndex(std::int64_t index) { fields_.defaultVariationIndex = index; }
  [[nodiscard]] const std::optional<std::string>& name() const CORVANE_LIFETIMEBOUND { return fields_.name; }
  void setName(std::optional<std::string> name) { fields_.name = std::move(name); }
  [[nodiscard]] const std::optional<std::string>& sku() const CORVANE_LIFETIMEBOUND { return fields_.sku; }
  void setSku(std::optional<std::string> sku) { fields_.sku = std::move(sku); }
  [[nodiscard]] const std::optional<std::string>& url() const CORVANE_LIFETIMEBOUND { return fields_.url; }
  void setUrl(std::optional<std::string> url) { fields_.url = std::move(url); }
  [[nodiscard]] const std::vector<Variation>& variations() const CORVANE_LIFETIMEBOUND { return fields_.variations; }

  /// Replaces the variations and checks them. Throws `ProductSpecError`: for an empty list, or for several variations
  /// of a product without attributes, with the product unchanged. For variations that use what the product does not
  /// define with the new variations in place, but not linked to each other.
  void setVariations(std::vector<Variation> variations);

  bool operator==(const Product&) const = default;

 private:
  friend struct JsonCoding<Product>;

  ProductFields fields_;
};

}  // namespace corvane
