#include "tools/value_framer.h"

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <algorithm>
#include <bit>
#include <cstdint>

namespace corvane::tools {

namespace {

/// A block is read at once: most of a catalogue is texts, and only the brackets between them matter.
constexpr std::size_t blockSize = 64;

/// For each byte of a block, from the lowest bit on, whether it is of a kind.
struct BlockMarks {
  std::uint64_t quotes = 0;
  std::uint64_t backslashes = 0;
  std::uint64_t controls = 0;
  std::uint64_t brackets = 0;
};

#ifdef __SSE2__
constexpr bool hasBlocks = true;

BlockMarks markBlock(const char* block) {
  constexpr std::size_t pieceSize = sizeof(__m128i);
  BlockMarks marks;
  for (std::size_t begin = 0; begin < blockSize; begin += pieceSize) {
    const __m128i piece = _mm_loadu_si128(reinterpret_cast<const __m128i*>(block + begin));
    const auto add = [&](std::uint64_t& mark, __m128i matches) {
      mark |= std::uint64_t{static_cast<unsigned>(_mm_movemask_epi8(matches))} << begin;
    };
    const auto equals = [](__m128i bytes, char character) { return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(character)); };
    // Square and curly brackets differ in this bit only.
    const __m128i curly = _mm_or_si128(piece, _mm_set1_epi8(' '));
    add(marks.quotes, equals(piece, '"'));
    add(marks.backslashes, equals(piece, '\\'));
    add(marks.controls, _mm_cmpeq_epi8(_mm_max_epu8(piece, _mm_set1_epi8('\x1f')), _mm_set1_epi8('\x1f')));
    add(marks.brackets, _mm_or_si128(equals(curly, '{'), equals(curly, '}')));
  }
  return marks;
}
#else
constexpr bool hasBlocks = false;

BlockMarks markBlock(const char* /*block*/) { return {}; }
#endif

/// Each bit becomes whether the number of bits up to it, itself included, is odd.
constexpr std::uint64_t parityUpTo(std::uint64_t bits) {
  for (unsigned distance = 1; distance < 64; distance *= 2) bits ^= bits << distance;
  return bits;
}

bool isBracket(char character) { return character == '{' || character == '}' || character == '[' || character == ']'; }

}  // namespace

ValueFramer::State ValueFramer::scan(std::string_view text) {
  const bool isContainer = !text.starts_with('"');
  State state = State::incomplete;
  while (state == State::incomplete && end_ < text.size()) {
    const bool isBlock = hasBlocks && isContainer && !isEscaped_ && text.size() - end_ >= blockSize;
    state = isBlock ? scanBlock(text) : scanBytes(text, std::min(text.size(), end_ + blockSize));
  }
  return state;
}

ValueFramer::State ValueFramer::scanBlock(std::string_view text) {
  const BlockMarks marks = markBlock(text.data() + end_);
  // An opening quote counts as inside, a closing one does not.
  const std::uint64_t inside = parityUpTo(marks.quotes) ^ (isInText_ ? ~std::uint64_t{0} : 0);
  if (marks.backslashes != 0 || (marks.controls & inside) != 0) return scanBytes(text, end_ + blockSize);
  for (std::uint64_t brackets = marks.brackets & ~inside; brackets != 0; brackets &= brackets - 1) {
    const State state = takeBracket(text, end_ + static_cast<std::size_t>(std::countr_zero(brackets)));
    if (state != State::incomplete) return state;
  }
  isInText_ = (inside >> (blockSize - 1)) != 0;
  end_ += blockSize;
  return State::incomplete;
}

ValueFramer::State ValueFramer::scanBytes(std::string_view text, std::size_t limit) {
  for (; end_ < limit; ++end_) {
    const char character = text[end_];
    if (!isInText_) {
      isInText_ = character == '"';
      if (!isBracket(character)) continue;
      const State state = takeBracket(text, end_);
      if (state != State::incomplete) return state;
    } else if (static_cast<unsigned char>(character) < ' ') {
      return State::broken;
    } else if (isEscaped_) {
      isEscaped_ = false;
    } else if (character == '\\') {
      isEscaped_ = true;
    } else if (character == '"') {
      isInText_ = false;
      if (!open_.empty()) continue;
      ++end_;
      return State::complete;
    }
  }
  return State::incomplete;
}

ValueFramer::State ValueFramer::takeBracket(std::string_view text, std::size_t offset) {
  const char bracket = text[offset];
  if (bracket == '{' || bracket == '[') {
    if (mayOpen(text, offset)) {
      open_.push_back(bracket == '{' ? '}' : ']');
      return State::incomplete;
    }
  } else if (!open_.empty() && open_.back() == bracket) {
    open_.pop_back();
    if (!open_.empty()) return State::incomplete;
    end_ = offset + 1;
    return State::complete;
  }
  end_ = offset;
  return State::broken;
}

bool ValueFramer::mayOpen(std::string_view text, std::size_t offset) const {
  if (open_.empty()) return offset == 0;
  // The value itself begins with something else than a blank.
  do --offset;
  while (text[offset] == ' ' || text[offset] == '\n' || text[offset] == '\t' || text[offset] == '\r');
  const char before = text[offset];
  return open_.back() == '}' ? before == ':' : before == ',' || before == '[';
}

}  // namespace corvane::tools
