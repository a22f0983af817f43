/// How customers rate a variation.
#pragma once

#include <cstdint>
#include <optional>

#include "corvane/export.h"

namespace corvane {

template <class Record>
struct JsonFields;

/// A rating out of a highest value. `encodeJson` and `decodeJson` take it.
class Rating {
 public:
  Rating(float rating, std::int64_t maxValue, std::optional<std::int64_t> numberOfRatings)
      : rating_(rating), maxValue_(maxValue), numberOfRatings_(numberOfRatings) {}

  [[nodiscard]] float rating() const { return rating_; }
  [[nodiscard]] std::int64_t maxValue() const { return maxValue_; }
  [[nodiscard]] std::optional<std::int64_t> numberOfRatings() const { return numberOfRatings_; }

  bool operator==(const Rating&) const = default;

 private:
  friend struct JsonFields<Rating>;

  float rating_;
  std::int64_t maxValue_;
  std::optional<std::int64_t> numberOfRatings_;
};

}  // namespace corvane
