/// Product data that contradicts itself.
#pragma once

#include <string>
#include <utility>

#include "corvane/export.h"
#include "corvane/platform/foundation/coding_error.h"

namespace corvane {

/// Thrown where a product, or a part of one, is built from data that does not fit together. The first contradiction
/// counts; nothing is collected.
class CORVANE_EXPORT ProductSpecError : public InvalidDataError {
 public:
  enum class Kind {
    undefinedAttributeDefinition,        ///< a variation uses an attribute that the product does not define
    undefinedOption,                     ///< a variation uses an option that its attribute does not list
    multipleDefinedAttributeDefinition,  ///< two attributes have the same identifier
    multipleDefinedOption,               ///< two options of an attribute have the same identifier
    typeError,                           ///< too few variations or attributes, or a mandatory value is missing
  };

  ProductSpecError(Kind kind, std::string debugDescription)
      : kind_(kind), debugDescription_(std::move(debugDescription)) {}

  [[nodiscard]] Kind kind() const noexcept { return kind_; }
  /// The message for developers, in English.
  [[nodiscard]] const std::string& debugDescription() const noexcept { return debugDescription_; }
  [[nodiscard]] const char* what() const noexcept override { return debugDescription_.c_str(); }

  bool operator==(const ProductSpecError& other) const {
    return kind_ == other.kind_ && debugDescription_ == other.debugDescription_;
  }

 private:
  Kind kind_;
  std::string debugDescription_;
};

}  // namespace corvane
