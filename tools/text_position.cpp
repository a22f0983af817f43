#include "tools/text_position.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace corvane::tools {

namespace {

/// All bytes of UTF-8 but those that continue a character. Runs over whole catalogues, so it takes eight at once.
std::size_t characterCount(std::string_view text) {
  constexpr std::uint64_t lowBits = 0x0101010101010101;
  constexpr std::size_t wordSize = sizeof(std::uint64_t);
  std::size_t count = text.size();
  while (text.size() >= wordSize) {
    // One sum for each of the eight places, for as long as all of them together fit into a byte.
    constexpr std::size_t mostWords = 31;
    const std::size_t words = std::min(text.size() / wordSize, mostWords);
    std::uint64_t continuing = 0;
    for (std::size_t word = 0; word < words; ++word) {
      std::uint64_t bytes = 0;
      std::memcpy(&bytes, text.data() + word * wordSize, wordSize);
      continuing += (bytes >> 7U) & ~(bytes >> 6U) & lowBits;
    }
    count -= (continuing * lowBits) >> 56U;
    text.remove_prefix(words * wordSize);
  }
  for (const char character : text) {
    if ((static_cast<unsigned char>(character) & 0xc0U) == 0x80U) --count;
  }
  return count;
}

}  // namespace

void TextPosition::advance(std::string_view passed) {
  byte += passed.size();
  for (std::size_t end = passed.find('\n'); end != std::string_view::npos; end = passed.find('\n')) {
    passed.remove_prefix(end + 1);
    ++line;
    column = 1;
  }
  column += characterCount(passed);
}

}  // namespace corvane::tools
