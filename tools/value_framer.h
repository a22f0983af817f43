/// Where a JSON value ends.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace corvane::tools {

/// Follows the brackets of an object, an array or a text to its end, without a look at what else is in it. Stops early
/// where a bracket shows that something is missing before it, so that a fault does not swallow what follows.
class ValueFramer {
 public:
  enum class State {
    incomplete,  ///< the text ends before the value does
    complete,    ///< the value ends before `end`
    broken,      ///< the byte at `end` cannot stand there, whatever follows
  };

  /// Goes on where the last call has ended. The text begins with the value, and is longer each time.
  State scan(std::string_view text);
  [[nodiscard]] std::size_t end() const { return end_; }

 private:
  State scanBlock(std::string_view text);
  State scanBytes(std::string_view text, std::size_t limit);
  State takeBracket(std::string_view text, std::size_t offset);
  [[nodiscard]] bool mayOpen(std::string_view text, std::size_t offset) const;

  std::vector<char> open_;  ///< the brackets that close what is open
  std::size_t end_ = 0;
  bool isInText_ = false;
  bool isEscaped_ = false;
};

}  // namespace corvane::tools
