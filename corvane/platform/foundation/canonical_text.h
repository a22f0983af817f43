/// Comparison of texts by Unicode canonical equivalence: a letter with its accent is the same however it is composed.
#pragma once

#include <deque>
#include <string>
#include <string_view>

namespace corvane {

/// Gives each text a key; keys are equal, byte by byte, exactly where texts are canonically equivalent. Text that is
/// not valid UTF-8 is only equal to itself.
class CanonicalKeys {
 public:
  /// The key lives as long as both the text and this object.
  [[nodiscard]] std::string_view of(std::string_view text);

 private:
  /// A text in ASCII is its own key; only the others are kept here.
  std::deque<std::string> decomposed_;
};

}  // namespace corvane
