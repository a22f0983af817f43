/// The axes along which a product varies, such as its colour.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "corvane/export.h"

namespace corvane {

template <class Record>
struct JsonFields;
template <class Record>
struct JsonCoding;
class ProductChecks;

/// A value that an attribute may take. `encodeJson` and `decodeJson` take it.
class AttributeDefinitionOption {
 public:
  /// Without a name the identifier serves as one.
  AttributeDefinitionOption(std::string id, std::optional<std::string> name)
      : id_(std::move(id)), name_(name ? std::move(name) : id_) {}

  [[nodiscard]] const std::string& id() const CORVANE_LIFETIMEBOUND { return id_; }
  /// None only for a record read from JSON without a name.
  [[nodiscard]] const std::optional<std::string>& name() const CORVANE_LIFETIMEBOUND { return name_; }

  bool operator==(const AttributeDefinitionOption&) const = default;

 private:
  friend struct JsonFields<AttributeDefinitionOption>;

  std::string id_;
  std::optional<std::string> name_;
};

/// An attribute of a product with the values that it may take. `encodeJson` and `decodeJson` take it.
class CORVANE_EXPORT AttributeDefinition {
 public:
  /// Without a name the identifier serves as one. Throws `ProductSpecError` when two options have the same identifier.
  AttributeDefinition(std::string id, std::optional<std::string> name, std::vector<AttributeDefinitionOption> options);

  [[nodiscard]] const std::string& id() const CORVANE_LIFETIMEBOUND { return id_; }
  [[nodiscard]] const std::optional<std::string>& name() const CORVANE_LIFETIMEBOUND { return name_; }
  /// Whether the attribute tells variations apart. A product decides it for its definitions; before that it is false,
  /// or what the JSON said.
  [[nodiscard]] std::optional<bool> significant() const { return significant_; }
  [[nodiscard]] const std::vector<AttributeDefinitionOption>& options() const CORVANE_LIFETIMEBOUND { return options_; }

  bool operator==(const AttributeDefinition&) const = default;

 private:
  friend struct JsonFields<AttributeDefinition>;
  friend struct JsonCoding<AttributeDefinition>;
  friend class ProductChecks;

  std::string id_;
  std::optional<std::string> name_;
  std::optional<bool> significant_ = false;
  std::vector<AttributeDefinitionOption> options_;
};

}  // namespace corvane
