/// The value that one variation takes for one attribute.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "corvane/export.h"
#include "corvane/product/attribute_definition.h"

namespace corvane {

/// Names an attribute of the product and one of its options. `encodeJson` and `decodeJson` take it.
class VariationAttribute {
 public:
  VariationAttribute(std::string id, std::string option) : id_(std::move(id)), option_(std::move(option)) {}
  VariationAttribute(const AttributeDefinition& attribute, const AttributeDefinitionOption& option)
      : VariationAttribute(attribute.id(), option.id()) {}

  [[nodiscard]] const std::string& id() const CORVANE_LIFETIMEBOUND { return id_; }
  [[nodiscard]] const std::string& option() const CORVANE_LIFETIMEBOUND { return option_; }
  /// The SKUs of all variations of the product that take this value; null until the variation is part of a product.
  /// The list lives as long as this record, or a copy of it.
  [[nodiscard]] const std::vector<std::string>* productOptions() const { return productOptions_.get(); }

  friend bool operator==(const VariationAttribute& left, const VariationAttribute& right) {
    if (left.id_ != right.id_ || left.option_ != right.option_) return false;
    if (left.productOptions_ == right.productOptions_) return true;
    return left.productOptions_ && right.productOptions_ && *left.productOptions_ == *right.productOptions_;
  }

 private:
  friend struct JsonFields<VariationAttribute>;
  friend class ProductChecks;

  std::string id_;
  std::string option_;
  /// One list serves all variations that take the value: a copy for each would grow with the square of their number.
  std::shared_ptr<const std::vector<std::string>> productOptions_;
};

}  // namespace corvane
