/// What can go wrong when a record is read from JSON or written to it.
#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <variant>
#include <vector>

#include "corvane/export.h"

namespace corvane {

/// One step from the root of a JSON text towards a value: a member's name or an element's index.
using CodingKey = std::variant<std::string, std::size_t>;

/// The steps from the root to a value; empty for the root itself.
using CodingPath = std::vector<CodingKey>;

/// A coding path as people write it: `product.variations[3].price`.
CORVANE_EXPORT std::string toText(const CodingPath& path);

/// Data that a record cannot be made of. What there is of it: `DecodingError`, and `ProductSpecError` for products.
///
///     try { show(decodeJson<Product>(text)); } catch (const InvalidDataError& error) { log(error.what()); }
class CORVANE_EXPORT InvalidDataError : public std::exception {
 public:
  InvalidDataError(const InvalidDataError&) = default;
  InvalidDataError& operator=(const InvalidDataError&) = default;
  ~InvalidDataError() override;

 protected:
  InvalidDataError() = default;
};

/// JSON that cannot be read as the wanted record.
class CORVANE_EXPORT DecodingError : public InvalidDataError {
 public:
  enum class Kind {
    typeMismatch,   ///< a value is there, but of another type
    valueNotFound,  ///< a null stands where a value is required
    keyNotFound,    ///< a required member is missing
    dataCorrupted,  ///< the text is no JSON, or the value is of the right type but not acceptable
  };

  DecodingError(Kind kind, std::string typeName, CodingPath codingPath, std::string debugDescription);

  [[nodiscard]] Kind kind() const noexcept { return kind_; }
  /// The type that was wanted, or for `keyNotFound` the name of the missing member.
  [[nodiscard]] const std::string& typeName() const noexcept { return typeName_; }
  [[nodiscard]] const CodingPath& codingPath() const noexcept { return codingPath_; }
  [[nodiscard]] const std::string& debugDescription() const noexcept { return debugDescription_; }
  /// The description, preceded by the coding path where there is one.
  [[nodiscard]] const std::string& text() const noexcept { return what_; }
  /// The same up to the first NUL, which names and values may contain.
  [[nodiscard]] const char* what() const noexcept override { return what_.c_str(); }

 private:
  Kind kind_;
  std::string typeName_;
  CodingPath codingPath_;
  std::string debugDescription_;
  std::string what_;
};

/// A record that cannot be written as JSON: text that is not UTF-8, a number that JSON has no form for.
class CORVANE_EXPORT EncodingError : public std::exception {
 public:
  enum class Kind { invalidValue };

  EncodingError(Kind kind, CodingPath codingPath, std::string debugDescription);

  [[nodiscard]] Kind kind() const noexcept { return kind_; }
  [[nodiscard]] const CodingPath& codingPath() const noexcept { return codingPath_; }
  [[nodiscard]] const std::string& debugDescription() const noexcept { return debugDescription_; }
  /// The description, preceded by the coding path where there is one.
  [[nodiscard]] const std::string& text() const noexcept { return what_; }
  /// The same up to the first NUL.
  [[nodiscard]] const char* what() const noexcept override { return what_.c_str(); }

 private:
  Kind kind_;
  CodingPath codingPath_;
  std::string debugDescription_;
  std::string what_;
};

}  // namespace corvane
