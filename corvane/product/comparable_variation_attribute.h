/// A property of a variation that customers compare, such as its material.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "corvane/export.h"

namespace corvane {

template <class Record>
struct JsonFields;

/// A labelled property. `encodeJson` and `decodeJson` take it.
class ComparableVariationAttribute {
 public:
  /// Without a name the identifier serves as one.
  ComparableVariationAttribute(std::string id, std::optional<std::string> name, std::string option)
      : id_(std::move(id)), name_(name ? std::move(name) : id_), option_(std::move(option)) {}

  [[nodiscard]] const std::string& id() const CORVANE_LIFETIMEBOUND { return id_; }
  /// None only for a record read from JSON without a name.
  [[nodiscard]] const std::optional<std::string>& name() const CORVANE_LIFETIMEBOUND { return name_; }
  [[nodiscard]] const std::string& option() const CORVANE_LIFETIMEBOUND { return option_; }

  bool operator==(const ComparableVariationAttribute&) const = default;

 private:
  friend struct JsonFields<ComparableVariationAttribute>;

  std::string id_;
  std::optional<std::string> name_;
  std::string option_;
};

}  // namespace corvane
