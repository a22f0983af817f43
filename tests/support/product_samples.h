/// Products for tests: one that a person can read, and generated ones.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/product/product.h"
#include "corvane/product/product_spec_error.h"
#include "tests/support/decoding_error.h"

namespace corvane {

/// A variation with nothing but what it must have.
inline VariationFields plainFields(std::string sku, std::vector<VariationAttribute> attributes) {
  return {.attributes = std::move(attributes),
          .imageUrls = {"https://shop.example/" + sku + ".png"},
          .inStock = true,
          .name = "Article " + sku,
          .price = Price("EUR", 12.5F, std::nullopt),
          .sku = sku};
}

inline Variation plainVariation(std::string sku, std::vector<VariationAttribute> attributes) {
  return Variation(plainFields(std::move(sku), std::move(attributes)));
}

inline AttributeDefinition definitionOf(std::string id, const std::vector<std::string>& options) {
  std::vector<AttributeDefinitionOption> records;
  for (const std::string& option : options) records.emplace_back(option, std::nullopt);
  return {std::move(id), std::nullopt, std::move(records)};
}

/// A shirt in two colours and two sizes, of which three combinations can be bought.
inline ProductFields shirtFields() {
  return {.attributes = {definitionOf("color", {"red", "blue"}), definitionOf("size", {"S", "M"})},
          .currency = "EUR",
          .description = "A shirt.",
          .locale = "de-CH",
          .variations = {plainVariation("red-S", {{"color", "red"}, {"size", "S"}}),
                         plainVariation("red-M", {{"color", "red"}, {"size", "M"}}),
                         plainVariation("blue-S", {{"color", "blue"}, {"size", "S"}})}};
}

/// What a record is written as, to be compared by meaning.
template <class Record>
nlohmann::json written(const Record& record) {
  return nlohmann::json::parse(encodeJson(record));
}

template <class Record>
Record readFrom(const nlohmann::json& json) {
  return decodeJson<Record>(json.dump());
}

template <class Record>
EncodingError encodingError(const Record& record) {
  try {
    static_cast<void>(encodeJson(record));
  } catch (const EncodingError& error) {
    return error;
  }
  ADD_FAILURE() << "the record was accepted";
  return {EncodingError::Kind::invalidValue, {}, {}};
}

/// The error with which a step refuses a product: its kind, and what it says.
template <class Step>
std::string refusal(Step step) {
  constexpr std::array kinds{"undefined attribute", "undefined option", "attribute twice", "option twice",
                             "type error"};
  try {
    step();
  } catch (const ProductSpecError& error) {
    return std::string(kinds.at(static_cast<std::size_t>(error.kind()))) + ": " + error.debugDescription();
  }
  return "nothing was refused";
}

}  // namespace corvane
