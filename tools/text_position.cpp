#include "tools/text_position.h"

#include <bit>
#include <cstdint>
#include <cstring>

namespace corvane::tools {

namespace {

/// All bytes of UTF-8 but those that continue a character. Runs over whole catalogues, so it takes eight at once.
std::size_t characterCount(std::string_view text) {
  constexpr std::uint64_t lowBits = 0x0101010101010101;
  std::size_t count = text.size();
  for (; text.size() >= sizeof(std::uint64_t); text.remove_prefix(sizeof(std::uint64_t))) {
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data(), sizeof(bytes));
    count -= static_cast<std::size_t>(std::popcount((bytes >> 7U) & ~(bytes >> 6U) & lowBits));
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
