#include "tools/value_framer.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cstring>

namespace corvane::tools {

namespace {

enum class ByteKind : unsigned char { other, quote, opening, closing };

constexpr auto byteKinds = [] {
  std::array<ByteKind, 256> kinds{};
  kinds['"'] = ByteKind::quote;
  kinds['{'] = kinds['['] = ByteKind::opening;
  kinds['}'] = kinds[']'] = ByteKind::closing;
  return kinds;
}();

/// How many bytes pass before a text may end: at a quote, a backslash or a control character. May be too low.
std::size_t plainLength(std::string_view text) {
  constexpr std::uint64_t lowBits = 0x0101010101010101;
  constexpr std::uint64_t highBits = lowBits << 7U;
  std::size_t length = 0;
  if constexpr (std::endian::native == std::endian::little) {
    for (; text.size() - length >= sizeof(std::uint64_t); length += sizeof(std::uint64_t)) {
      std::uint64_t bytes = 0;
      std::memcpy(&bytes, text.data() + length, sizeof(bytes));
      const std::uint64_t quotes = bytes ^ (lowBits * '"');
      const std::uint64_t backslashes = bytes ^ (lowBits * '\\');
      const std::uint64_t ends = (((quotes - lowBits) & ~quotes) | ((backslashes - lowBits) & ~backslashes) |
                                  ((bytes - lowBits * ' ') & ~bytes)) &
                                 highBits;
      if (ends != 0) return length + static_cast<std::size_t>(std::countr_zero(ends)) / 8;
    }
  }
  return length;
}

}  // namespace

ValueFramer::State ValueFramer::scan(std::string_view text) {
  while (end_ < text.size()) {
    if (isInText_) {
      const State state = scanText(text);
      if (state != State::complete) return state;
      if (open_.empty()) return State::complete;
      continue;
    }
    const char character = text[end_];
    switch (byteKinds[static_cast<unsigned char>(character)]) {
      case ByteKind::other:
        break;
      case ByteKind::quote:
        isInText_ = true;
        break;
      case ByteKind::opening:
        if (!mayOpen(text)) return State::broken;
        open_.push_back(character == '{' ? '}' : ']');
        break;
      case ByteKind::closing:
        if (open_.empty() || open_.back() != character) return State::broken;
        open_.pop_back();
        if (open_.empty()) {
          ++end_;
          return State::complete;
        }
        break;
    }
    ++end_;
  }
  return State::incomplete;
}

ValueFramer::State ValueFramer::scanText(std::string_view text) {
  while (end_ < text.size()) {
    if (!isEscaped_) end_ += plainLength(text.substr(end_));
    if (end_ == text.size()) break;
    const char character = text[end_];
    if (static_cast<unsigned char>(character) < ' ') return State::broken;
    ++end_;
    if (isEscaped_) {
      isEscaped_ = false;
    } else if (character == '\\') {
      isEscaped_ = true;
    } else if (character == '"') {
      isInText_ = false;
      return State::complete;
    }
  }
  return State::incomplete;
}

bool ValueFramer::mayOpen(std::string_view text) const {
  if (open_.empty()) return end_ == 0;
  const char before = text[text.find_last_not_of(" \t\r\n", end_ - 1)];
  return open_.back() == '}' ? before == ':' : before == ',' || before == '[';
}

}  // namespace corvane::tools
