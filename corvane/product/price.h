/// What a variation costs.
#pragma once

#include <optional>
#include <string>
#include <utility>

#include "corvane/export.h"

namespace corvane {

template <class Record>
struct JsonFields;

/// A price in one currency. `encodeJson` and `decodeJson` take it.
class Price {
 public:
  /// `current` is what the customer pays now, `original` what it was before a reduction.
  Price(std::string currency, float current, std::optional<float> original)
      : currency_(std::move(currency)), current_(current), original_(original) {}

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
