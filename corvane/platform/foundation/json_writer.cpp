#include "corvane/platform/foundation/json_writer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/utf8.h"

namespace corvane {

namespace {

static_assert(std::endian::native == std::endian::little, "the scan finds the first byte at the low end of a word");

/// As many bytes as one instruction looks at, and the same as words.
template <std::size_t size>
struct Block {
  using Word = std::conditional_t<size == 4, std::uint32_t, std::uint64_t>;
  using Bytes __attribute__((vector_size(size))) = unsigned char;
  using Words __attribute__((vector_size(size))) = Word;
  static constexpr std::size_t wordCount = size / sizeof(Word);
};

/// Copies a text as far as nothing in it needs an escape, and looks at each byte once while doing so.
class PlainCopy {
 public:
  /// There must be room for the whole text.
  PlainCopy(std::string_view text, char* to) : from_(text.data()), to_(to), size_(text.size()) {
    constexpr std::size_t largest = 16;
    if (size_ >= largest) {
      while (size_ - length_ >= largest) {
        if (!step<largest>(length_)) return;
      }
      // The last block overlaps the one before, of which nothing needs an escape.
      if (length_ < size_) static_cast<void>(step<largest>(size_ - largest));
    } else if (size_ >= 8) {
      if (step<8>(0) && length_ < size_) static_cast<void>(step<8>(size_ - 8));
    } else if (size_ >= 4) {
      if (step<4>(0) && length_ < size_) static_cast<void>(step<4>(size_ - 4));
    } else {
      for (; length_ < size_; ++length_) {
        const auto byte = static_cast<unsigned char>(from_[length_]);
        if (byte < ' ' || byte == '"' || byte == '\\') return;
        to_[length_] = from_[length_];
        seen_ |= byte;
      }
    }
  }

  /// How far it came.
  [[nodiscard]] std::size_t length() const { return length_; }
  /// Whether that and the rest of its last block was ASCII.
  [[nodiscard]] bool isAscii() const { return (seen_ & 0x8080808080808080U) == 0; }

 private:
  /// Copies a block. False where something in it needs an escape.
  template <std::size_t size>
  bool step(std::size_t at) {
    using Words = typename Block<size>::Words;
    typename Block<size>::Bytes block;
    std::memcpy(&block, from_ + at, size);
    std::memcpy(to_ + at, &block, size);
    const auto marks = reinterpret_cast<Words>((block < ' ') | (block == '"') | (block == '\\'));
    const auto bytes = reinterpret_cast<Words>(block);
    constexpr std::size_t last = Block<size>::wordCount - 1;
    seen_ |= bytes[0] | bytes[last];
    if ((marks[0] | marks[last]) == 0) {
      length_ = at + size;
      return true;
    }
    const std::size_t word = marks[0] != 0 ? 0 : last;
    length_ = at + word * sizeof(marks[0]) + static_cast<std::size_t>(std::countr_zero(marks[word])) / 8;
    return false;
  }

  const char* from_;
  char* to_;
  std::size_t size_;
  std::size_t length_ = 0;
  /// All bytes that were looked at, one over the other.
  std::uint64_t seen_ = 0;
};

/// The escape of a character that needs one, at most six characters long.
std::size_t writeEscape(unsigned char character, char* to) {
  constexpr std::string_view hex = "0123456789abcdef";
  to[0] = '\\';
  switch (character) {
    case '"':
    case '\\':
      to[1] = static_cast<char>(character);
      return 2;
    case '\n':
      to[1] = 'n';
      return 2;
    case '\r':
      to[1] = 'r';
      return 2;
    case '\t':
      to[1] = 't';
      return 2;
    default:
      break;
  }
  to[1] = 'u';
  to[2] = '0';
  to[3] = '0';
  to[4] = hex[character >> 4U];
  to[5] = hex[character & 0xFU];
  return 6;
}

/// Writes a number of at most two decimals, as prices are; null for any other. Below 65,536 neighbouring floats are
/// closer than hundredths are, so what reads back as the same float is the shortest that does.
char* writeHundredths(float value, char* to) {
  constexpr float limit = 65536;
  if (value >= limit || std::signbit(value)) return nullptr;
  constexpr double hundred = 100;
  const auto hundredths = static_cast<std::uint32_t>(std::lround(static_cast<double>(value) * hundred));
  if (static_cast<float>(hundredths / hundred) != value) return nullptr;
  to = std::to_chars(to, to + 8, hundredths / 100).ptr;
  const std::uint32_t rest = hundredths % 100;
  if (rest == 0) return to;
  *to++ = '.';
  *to++ = static_cast<char>('0' + rest / 10);
  if (rest % 10 != 0) *to++ = static_cast<char>('0' + rest % 10);
  return to;
}

/// The path of the value that comes at the end of an unfinished JSON text.
CodingPath pathAtEnd(std::string_view text) {
  /// A container that is open: the name of its present member, or the index of its present element.
  std::vector<CodingKey> open;
  for (std::size_t at = 0; at < text.size(); ++at) {
    switch (text[at]) {
      case '{':
        open.emplace_back(std::string());
        break;
      case '[':
        open.emplace_back(std::size_t{0});
        break;
      case '}':
      case ']':
        open.pop_back();
        break;
      case ',':
        if (open.empty()) break;
        if (auto* const index = std::get_if<std::size_t>(&open.back())) ++*index;
        break;
      case '"': {
        const std::size_t begin = ++at;
        while (text[at] != '"') at += text[at] == '\\' ? 2U : 1U;
        if (at + 1 < text.size() && text[at + 1] == ':') open.back() = std::string(text.substr(begin, at - begin));
        break;
      }
      default:
        break;
    }
  }
  return open;
}

}  // namespace

EncodingError JsonWriter::errorHere(const char* description) const {
  return {EncodingError::Kind::invalidValue, pathAtEnd({buffer_.data(), size()}), description};
}

void JsonWriter::text(std::string_view value) {
  char* const to = roomFor(value.size() + 3);
  const PlainCopy copy(value, to + 1);
  if (!copy.isAscii() && !isValidUtf8(value)) throw errorHere("The text is not valid UTF-8.");
  if (copy.length() < value.size()) {
    // What came before was looked at up to the block of its first escape only.
    const std::string_view rest = value.substr(copy.length());
    if (copy.isAscii() && !isValidUtf8(rest)) throw errorHere("The text is not valid UTF-8.");
    *to = '"';
    end_ = to + 1 + copy.length();
    return appendEscaped(rest);
  }
  *to = '"';
  to[value.size() + 1] = '"';
  to[value.size() + 2] = ',';
  end_ = to + value.size() + 3;
}

void JsonWriter::appendEscaped(std::string_view rest) {
  constexpr std::size_t longestEscape = 6;
  while (!rest.empty()) {
    end_ += writeEscape(static_cast<unsigned char>(rest.front()), roomFor(longestEscape));
    rest.remove_prefix(1);
    const std::size_t length = PlainCopy(rest, roomFor(rest.size())).length();
    end_ += length;
    rest.remove_prefix(length);
  }
  append("\",");
}

void JsonWriter::integer(std::int64_t value) {
  constexpr std::size_t longest = 24;
  char* const to = roomFor(longest);
  end_ = std::to_chars(to, to + longest, value).ptr;
  *end_++ = ',';
}

void JsonWriter::real(float value) {
  if (!std::isfinite(value)) throw errorHere("JSON has no form for a number that is not finite.");
  // Without its fraction it would be read as an integer, which has no sign at zero.
  if (value == 0 && std::signbit(value)) return append("-0.0,");
  constexpr std::size_t longest = 40;
  char* const to = roomFor(longest);
  char* end = writeHundredths(value, to);
  if (end == nullptr) {
    // Prices read best without an exponent; far from them digits without one would be all zeros.
    const float magnitude = std::abs(value);
    const bool isFixed = magnitude >= 1e-6F && magnitude < 0x1p24F;
    end = (isFixed ? std::to_chars(to, to + longest, value, std::chars_format::fixed)
                   : std::to_chars(to, to + longest, value))
              .ptr;
  }
  *end++ = ',';
  end_ = end;
}

std::string JsonWriter::take() {
  const std::size_t written = size();
  buffer_.resize(written > 0 && end_[-1] == ',' ? written - 1 : written);
  std::string text = std::exchange(buffer_, {});
  end_ = limit_ = buffer_.data();
  sharedTexts_.clear();
  return text;
}

void JsonWriter::copyOf(Extent extent) {
  char* const to = roomFor(extent.size + 1);
  std::memcpy(to, buffer_.data() + extent.begin, extent.size);
  to[extent.size] = ',';
  end_ = to + extent.size + 1;
}

void JsonWriter::grow(std::size_t count) {
  constexpr std::size_t smallest = 256;
  const std::size_t written = size();
  const std::size_t larger = std::max({smallest, buffer_.size() * 2, written + count});
  buffer_.resize_and_overwrite(larger, [](char*, std::size_t whole) { return whole; });
  end_ = buffer_.data() + written;
  limit_ = buffer_.data() + larger;
}

}  // namespace corvane
