/// Where in a file something stands.
#pragma once

#include <cstddef>
#include <string_view>

namespace corvane::tools {

/// A place as editors show it, all counted from 1. Columns are characters, not bytes.
struct TextPosition {
  std::size_t line = 1;
  std::size_t column = 1;
  std::size_t byte = 1;

  /// Moves over a piece of text.
  void advance(std::string_view passed);
};

/// The place that lies behind a piece of text that begins at another.
[[nodiscard]] inline TextPosition positionBehind(TextPosition begin, std::string_view passed) {
  begin.advance(passed);
  return begin;
}

}  // namespace corvane::tools
