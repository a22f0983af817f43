/// One purchasable article of a product.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "corvane/export.h"
#include "corvane/product/comparable_variation_attribute.h"
#include "corvane/product/detail.h"
#include "corvane/product/price.h"
#include "corvane/product/rating.h"
#include "corvane/product/variation_attribute.h"

namespace corvane {

/// What a variation is made from; see `Variation` for the meaning of each.
struct VariationFields {
  std::vector<VariationAttribute> attributes{};
  std::optional<std::vector<ComparableVariationAttribute>> comparableAttributes{};
  std::optional<std::vector<Detail>> details{};
  std::vector<std::string> imageUrls{};
  bool inStock = false;
  std::string name{};
  Price price;
  std::optional<Rating> rating{};
  std::string sku{};
  std::optional<std::string> subtitle{};
  std::optional<std::string> url{};

  bool operator==(const VariationFields&) const = default;
};

/// An article with its own SKU. Nothing is checked before it becomes part of a product. `encodeJson` and `decodeJson`
/// take it.
class Variation {
 public:
  explicit Variation(VariationFields fields) : fields_(std::move(fields)) {}

  /// The option that it takes for each attribute of the product.
  [[nodiscard]] const std::vector<VariationAttribute>& attributes() const CORVANE_LIFETIMEBOUND {
    return fields_.attributes;
  }
  [[nodiscard]] const std::optional<std::vector<ComparableVariationAttribute>>& comparableAttributes() const
      CORVANE_LIFETIMEBOUND {
    return fields_.comparableAttributes;
  }
  void setComparableAttributes(std::optional<std::vector<ComparableVariationAttribute>> attributes) {
    fields_.comparableAttributes = std::move(attributes);
  }
  [[nodiscard]] const std::optional<std::vector<Detail>>& details() const CORVANE_LIFETIMEBOUND {
    return fields_.details;
  }
  void setDetails(std::optional<std::vector<Detail>> details) { fields_.details = std::move(details); }
  [[nodiscard]] const std::vector<std::string>& imageUrls() const CORVANE_LIFETIMEBOUND { return fields_.imageUrls; }
  [[nodiscard]] bool inStock() const { return fields_.inStock; }
  [[nodiscard]] const std::string& name() const CORVANE_LIFETIMEBOUND { return fields_.name; }
  [[nodiscard]] const Price& price() const CORVANE_LIFETIMEBOUND { return fields_.price; }
  [[nodiscard]] const std::optional<Rating>& rating() const CORVANE_LIFETIMEBOUND { return fields_.rating; }
  void setRating(std::optional<Rating> rating) { fields_.rating = rating; }
  [[nodiscard]] const std::string& sku() const CORVANE_LIFETIMEBOUND { return fields_.sku; }
  [[nodiscard]] const std::optional<std::string>& subtitle() const CORVANE_LIFETIMEBOUND { return fields_.subtitle; }
  void setSubtitle(std::optional<std::string> subtitle) { fields_.subtitle = std::move(subtitle); }
  /// The article's page in the shop.
  [[nodiscard]] const std::optional<std::string>& url() const CORVANE_LIFETIMEBOUND { return fields_.url; }

  bool operator==(const Variation&) const = default;

 private:
  friend class ProductChecks;
  friend struct JsonCoding<Variation>;

  VariationFields fields_;
};

}  // namespace corvane
