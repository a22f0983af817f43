#include "corvane/product/product.h"

#include "corvane/product/product_checks.h"
#include "corvane/product/product_spec_error.h"

namespace corvane {

AttributeDefinition::AttributeDefinition(std::string id, std::optional<std::string> name,
                                         std::vector<AttributeDefinitionOption> options)
    : id_(std::move(id)), name_(name ? std::move(name) : id_), options_(std::move(options)) {
  ProductChecks::checkOptions(*this);
}

Product::Product(ProductFields fields) : fields_(std::move(fields)) {
  ProductChecks::checkAttributeDefinitions(fields_.attributes);
  if (fields_.variations.empty()) return;
  ProductChecks::checkCounts(fields_.attributes, fields_.variations);
  const TakenValues taken = ProductChecks::checkVariations(fields_.attributes, fields_.variations);
  ProductChecks::linkProductOptions(fields_.variations, taken);
}

void Product::setVariations(std::vector<Variation> variations) {
  if (variations.empty()) {
    throw ProductSpecError(ProductSpecError::Kind::typeError, "Need at least one(1) variation");
  }
  ProductChecks::checkCounts(fields_.attributes, variations);
  fields_.variations = std::move(variations);
  const TakenValues taken = ProductChecks::checkVariations(fields_.attributes, fields_.variations);
  ProductChecks::checkAttributeDefinitions(fields_.attributes);
  ProductChecks::linkProductOptions(fields_.variations, taken);
}

}  // namespace corvane
