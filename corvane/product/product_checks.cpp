#include "corvane/product/product_checks.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "corvane/platform/foundation/canonical_text.h"
#include "corvane/product/product_spec_error.h"

namespace corvane {

namespace {

using Kind = ProductSpecError::Kind;

/// The defined values, each with a number of its own: options by their canonical keys, within attributes by theirs.
class ValueNumbers {
 public:
  using Options = std::unordered_map<std::string_view, std::uint32_t>;

  explicit ValueNumbers(const std::vector<AttributeDefinition>& definitions) {
    for (const AttributeDefinition& definition : definitions) {
      Options& options = attributes_[keys_.of(definition.id())];
      for (const AttributeDefinitionOption& option : definition.options()) {
        if (options.try_emplace(keys_.of(option.id()), count_).second) ++count_;
      }
    }
  }

  [[nodiscard]] std::uint32_t count() const { return count_; }

  std::uint32_t of(const Variation& variation, const VariationAttribute& attribute) {
    const auto options = attributes_.find(keys_.of(attribute.id()));
    if (options == attributes_.end()) {
      throw ProductSpecError(Kind::undefinedAttributeDefinition,
                             "Variation " + variation.sku() + " uses undefined attribute " + attribute.id());
    }
    const auto value = options->second.find(keys_.of(attribute.option()));
    if (value == options->second.end()) {
      throw ProductSpecError(Kind::undefinedOption, "Variation " + variation.sku() + " uses undefined option " +
                                                        attribute.option() + " for " + attribute.id());
    }
    return value->second;
  }

 private:
  CanonicalKeys keys_;
  std::unordered_map<std::string_view, Options> attributes_;
  std::uint32_t count_ = 0;
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

TakenValues ProductChecks::checkVariations(const std::vector<AttributeDefinition>& definitions,
                                           const std::vector<Variation>& variations) {
  ValueNumbers numbers(definitions);
  TakenValues taken{.counts = std::vector<std::size_t>(numbers.count())};
  for (const Variation& variation : variations) {
    for (const VariationAttribute& attribute : variation.attributes()) {
      ++taken.counts[taken.values.emplace_back(numbers.of(variation, attribute))];
    }
  }
  return taken;
}

void ProductChecks::linkProductOptions(std::vector<Variation>& variations, const TakenValues& taken) {
  struct Sharing {
    std::shared_ptr<std::vector<std::string>> skus{};
    const Variation* last = nullptr;
  };
  std::vector<Sharing> sharings(taken.counts.size());
  auto value = taken.values.begin();
  for (Variation& variation : variations) {
    for (VariationAttribute& attribute : variation.fields_.attributes) {
      Sharing& sharing = sharings[*value];
      if (sharing.skus == nullptr) {
        sharing.skus = std::make_shared<std::vector<std::string>>();
        sharing.skus->reserve(taken.counts[*value]);
      }
      // A variation that takes a value twice still shares it once.
      if (sharing.last != &variation) sharing.skus->push_back(variation.sku());
      sharing.last = &variation;
      attribute.productOptions_ = sharing.skus;
      ++value;
    }
  }
}

}  // namespace corvane
