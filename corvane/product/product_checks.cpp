#include "corvane/product/product_checks.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "corvane/platform/foundation/canonical_text.h"
#include "corvane/product/product_spec_error.h"

namespace corvane {

namespace {

using Kind = ProductSpecError::Kind;

/// An attribute and the option taken for it, by their canonical keys.
using AttributeValue = std::pair<std::string_view, std::string_view>;

struct AttributeValueHash {
  std::size_t operator()(const AttributeValue& value) const {
    const std::hash<std::string_view> hash;
    return hash(value.first) * 31 + hash(value.second);
  }
};

}  // namespace

void ProductChecks::checkOptions(const AttributeDefinition& definition) {
  CanonicalKeys keys;
  std::unordered_set<std::string_view> seen;
  for (const AttributeDefinitionOption& option : definition.options()) {
    if (!seen.insert(keys.of(option.id())).second) {
      throw ProductSpecError(Kind::multipleDefinedOption,
                             "Option " + option.id() + " defined multiple times for attribute " + definition.id());
    }
  }
}

void ProductChecks::checkAttributeDefinitions(std::vector<AttributeDefinition>& definitions) {
  // Only what was read from JSON can already say which attributes are significant; without a word all of them are.
  const bool isDecided = std::ranges::any_of(
      definitions, [](const AttributeDefinition& definition) { return definition.significant() == true; });
  CanonicalKeys keys;
  std::unordered_set<std::string_view> seen;
  for (AttributeDefinition& definition : definitions) {
    if (!seen.insert(keys.of(definition.id())).second) {
      throw ProductSpecError(Kind::multipleDefinedAttributeDefinition,
                             "Attribute " + definition.id() + " defined multiple times");
    }
    definition.significant_ = isDecided ? definition.significant_.value_or(false) : true;
  }
}

void ProductChecks::checkCounts(const std::vector<AttributeDefinition>& definitions,
                                const std::vector<Variation>& variations) {
  if (variations.size() > 1 && definitions.empty()) {
    throw ProductSpecError(Kind::typeError, "Need at least one(1) attribute if more than one(1) variation");
  }
}

void ProductChecks::checkVariations(const std::vector<AttributeDefinition>& definitions,
                                    const std::vector<Variation>& variations) {
  CanonicalKeys keys;
  std::unordered_map<std::string_view, std::unordered_set<std::string_view>> optionsOf;
  for (const AttributeDefinition& definition : definitions) {
    auto& options = optionsOf[keys.of(definition.id())];
    for (const AttributeDefinitionOption& option : definition.options()) options.insert(keys.of(option.id()));
  }
  for (const Variation& variation : variations) {
    for (const VariationAttribute& attribute : variation.attributes()) {
      const auto options = optionsOf.find(keys.of(attribute.id()));
      if (options == optionsOf.end()) {
        throw ProductSpecError(Kind::undefinedAttributeDefinition,
                               "Variation " + variation.sku() + " uses undefined attribute " + attribute.id());
      }
      if (!options->second.contains(keys.of(attribute.option()))) {
        throw ProductSpecError(Kind::undefinedOption, "Variation " + variation.sku() + " uses undefined option " +
                                                          attribute.option() + " for " + attribute.id());
      }
    }
  }
}

void ProductChecks::linkProductOptions(std::vector<Variation>& variations) {
  struct Sharing {
    std::shared_ptr<std::vector<std::string>> skus = std::make_shared<std::vector<std::string>>();
    const Variation* last = nullptr;
  };
  CanonicalKeys keys;
  std::unordered_map<AttributeValue, Sharing, AttributeValueHash> sharings;
  for (Variation& variation : variations) {
    for (VariationAttribute& attribute : variation.fields_.attributes) {
      Sharing& sharing = sharings[{keys.of(attribute.id_), keys.of(attribute.option_)}];
      // A variation that takes a value twice still shares it once.
      if (sharing.last != &variation) sharing.skus->push_back(variation.sku());
      sharing.last = &variation;
      attribute.productOptions_ = sharing.skus;
    }
  }
}

}  // namespace corvane
