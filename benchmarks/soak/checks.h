/// What the soak has looked at, and what was not as it should be.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane::soak {

/// Counts checks and prints each one that fails, up to a number that a person still reads.
class Checks {
 public:
  explicit Checks(std::string_view part) : part_(part) {}

  /// Gives back whether the check held.
  bool that(bool holds, std::string_view what);
  bool areEqual(std::string_view actual, std::string_view expected, std::string_view what);

  [[nodiscard]] std::int64_t count() const { return count_; }
  [[nodiscard]] std::int64_t failureCount() const { return failureCount_; }

 private:
  std::string part_;
  std::int64_t count_ = 0;
  std::int64_t failureCount_ = 0;
};

}  // namespace corvane::soak
