/// What a variation costs.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "corvane/export.h"

namespace corvane {

template <class Record>
struct JsonFields;

/// A price in one currency. `encodeJson` and `decodeJson` take it.
///
/// The amounts are kept as 32-bit floats, and written as the shortest decimal that reads back as the same float. Any
/// amount of up to six digits comes out as it was given, and so do most of seven: with two of them behind the point,
/// all up to 131072. `fromDecimal` and `fromMinorUnits` refuse an amount that would come out as another one; the
/// constructor takes what its caller has rounded.
class Price {
 public:
  /// `current` is what the customer pays now, `original` what it was before a reduction.
  Price(std::string currency, float current, std::optional<float> original)
      : currency_(std::move(currency)), current_(current), original_(original) {}

  /// Amounts as decimal texts such as "59.95": digits, perhaps with a minus before them and a point between them.
  ///
  /// Throws `DecodingError` for a text of another form, and for an amount that a price cannot keep.
  [[nodiscard]] CORVANE_EXPORT static Price fromDecimal(std::string currency, std::string_view current,
                                                        std::optional<std::string_view> original = std::nullopt);
  /// Amounts in the currency's smallest unit, of which `fractionDigits` stand behind the point: 5995 with 2 is 59.95,
  /// and 5995 with 0 is 5995. How many a currency has is the shop's to know; 0 to 9 are taken.
  ///
  /// Throws `DecodingError` for an amount that a price cannot keep, and for other numbers of digits.
  [[nodiscard]] CORVANE_EXPORT static Price fromMinorUnits(std::string currency, int fractionDigits,
                                                           std::int64_t current,
                                                           std::optional<std::int64_t> original = std::nullopt);

  [[nodiscard]] const std::string& currency() const CORVANE_LIFETIMEBOUND { return currency_; }
  [[nodiscard]] float current() const { return current_; }
  [[nodiscard]] std::optional<float> original() const { return original_; }
  void setOriginal(std::optional<float> original) { original_ = original; }

  bool operator==(const Price&) const = default;

 private:
  friend struct JsonFields<Price>;

  std::string currency_;
  float current_;
  std::optional<float> original_;
};

}  // namespace corvane
