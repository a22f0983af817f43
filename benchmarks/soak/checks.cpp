#include "benchmarks/soak/checks.h"

#include <cstdio>

namespace corvane::soak {

namespace {

constexpr int mostPrinted = 20;

}  // namespace

bool Checks::that(bool holds, std::string_view what) {
  ++count_;
  if (holds) return true;
  if (++failureCount_ <= mostPrinted) {
    std::printf("FAILED in %s: %.*s\n", part_.c_str(), static_cast<int>(what.size()), what.data());
  }
  return false;
}

bool Checks::areEqual(std::string_view actual, std::string_view expected, std::string_view what) {
  if (actual == expected) return that(true, what);
  return that(false, std::string(what) + ": expected \"" + std::string(expected) + "\", but got \"" +
                         std::string(actual) + "\"");
}

}  // namespace corvane::soak
