/// Chance that is the same in every run with the same seed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace corvane::soak {

/// The standard library's distributions differ between its makers, so the draws are made by hand.
class RandomSource {
 public:
  explicit RandomSource(std::uint64_t seed) : engine_(seed) {}

  /// A number below the limit, which is above 0.
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(engine_() % limit); }
  bool happensInPercent(std::size_t percent) { return below(100) < percent; }

 private:
  std::mt19937_64 engine_;
};

}  // namespace corvane::soak
