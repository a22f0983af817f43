#include "corvane/platform/foundation/json_writer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <utility>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/utf8.h"

namespace corvane {

namespace {

static_assert(std::endian::native == std::endian::little, "the scan finds the first byte at the low end of a word");

constexpr std::uint64_t everyByte(std::uint8_t value) { return 0x0101010101010101ULL * value; }

/// The high bit of every byte that is zero; bytes above the first such one may be marked wrongly.
constexpr std::uint64_t zeroBytes(std::uint64_t word) { return (word - everyByte(1)) & ~word & everyByte(0x80); }

/// The high bit of every byte that needs an escape, the first of them for certain. Bytes beyond ASCII need none.
constexpr std::uint64_t bytesToEscape(std::uint64_t word) {
  const std::uint64_t quote = zeroBytes(word ^ everyByte('"'));
  const std::uint64_t backslash = zeroBytes(word ^ everyByte('\\'));
  const std::uint64_t control = zeroBytes(word & everyByte(0xE0));
  return quote | backslash | control;
}

struct PlainRun {
  std::size_t length;
  bool isAscii;
};

/// How far a text goes on without anything to escape.
PlainRun plainRun(std::string_view text) {
  std::uint64_t seen = 0;
  std::size_t length = 0;
  for (; length + 8 <= text.size(); length += 8) {
    std::uint64_t word = 0;
    std::memcpy(&word, text.data() + length, 8);
    if (const std::uint64_t marks = bytesToEscape(word); marks != 0) {
      // What lies behind the first mark does not matter: the rest of the text is looked at again.
      return {length + static_cast<std::size_t>(std::countr_zero(marks)) / 8, ((seen | word) & everyByte(0x80)) == 0};
    }
    seen |= word;
  }
  for (; length < text.size(); ++length) {
    const auto byte = static_cast<unsigned char>(text[length]);
    if (byte < 0x20 || byte == '"' || byte == '\\') break;
    seen |= byte;
  }
  return {length, (seen & everyByte(0x80)) == 0};
}

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

[[noreturn]] void refuse(const char* description) {
  throw EncodingError(EncodingError::Kind::invalidValue, {}, description);
}

}  // namespace

void JsonWriter::key(std::string_view name) {
  char* const room = roomFor(name.size() + 4);
  char* to = room;
  if (needsComma_) *to++ = ',';
  *to++ = '"';
  std::memcpy(to, name.data(), name.size());
  to += name.size();
  *to++ = '"';
  *to++ = ':';
  size_ += static_cast<std::size_t>(to - room);
  needsComma_ = false;
}

void JsonWriter::text(std::string_view value) {
  // Most texts need no escape and take one step.
  const PlainRun run = plainRun(value);
  if (!run.isAscii && !isValidUtf8(value)) refuse("The text is not valid UTF-8.");
  char* const room = roomFor(value.size() + 3);
  char* to = room;
  if (needsComma_) *to++ = ',';
  *to++ = '"';
  std::memcpy(to, value.data(), run.length);
  to += run.length;
  needsComma_ = true;
  if (run.length == value.size()) {
    *to++ = '"';
    size_ += static_cast<std::size_t>(to - room);
    return;
  }
  size_ += static_cast<std::size_t>(to - room);
  appendEscaped(value.substr(run.length), run.isAscii);
}

void JsonWriter::appendEscaped(std::string_view rest, bool isBeforeAscii) {
  // What came before was looked at up to its first escape only.
  if (isBeforeAscii && !isValidUtf8(rest)) refuse("The text is not valid UTF-8.");
  while (!rest.empty()) {
    size_ += writeEscape(static_cast<unsigned char>(rest.front()), roomFor(6));
    rest.remove_prefix(1);
    const std::size_t length = plainRun(rest).length;
    append(rest.substr(0, length));
    rest.remove_prefix(length);
  }
  append("\"");
}

void JsonWriter::integer(std::int64_t value) {
  separate();
  char* const room = roomFor(24);
  size_ += static_cast<std::size_t>(std::to_chars(room, room + 24, value).ptr - room);
}

void JsonWriter::real(float value) {
  if (!std::isfinite(value)) refuse("JSON has no form for a number that is not finite.");
  separate();
  // Without its fraction it would be read as an integer, which has no sign at zero.
  if (value == 0 && std::signbit(value)) return append("-0.0");
  char* const room = roomFor(32);
  // Prices read best without an exponent; far from them digits without one would be all zeros.
  const float magnitude = std::abs(value);
  const bool isFixed = magnitude == 0 || (magnitude >= 1e-6F && magnitude < 0x1p24F);
  const auto result =
      isFixed ? std::to_chars(room, room + 32, value, std::chars_format::fixed) : std::to_chars(room, room + 32, value);
  size_ += static_cast<std::size_t>(result.ptr - room);
}

void JsonWriter::boolean(bool value) {
  separate();
  append(value ? "true" : "false");
}

std::string JsonWriter::take() {
  buffer_.resize(size_);
  size_ = 0;
  needsComma_ = false;
  sharedTexts_.clear();
  return std::exchange(buffer_, {});
}

void JsonWriter::copyOf(Extent extent) {
  separate();
  char* const room = roomFor(extent.size);
  std::memcpy(room, buffer_.data() + extent.begin, extent.size);
  size_ += extent.size;
}

void JsonWriter::beginContainer(char bracket) {
  separate();
  append({&bracket, 1});
  needsComma_ = false;
}

void JsonWriter::endContainer(char bracket) {
  append({&bracket, 1});
  needsComma_ = true;
}

void JsonWriter::separate() {
  if (needsComma_) append(",");
  needsComma_ = true;
}

char* JsonWriter::roomFor(std::size_t count) {
  constexpr std::size_t smallest = 256;
  if (buffer_.size() - size_ < count) {
    const std::size_t size = std::max({smallest, buffer_.size() * 2, size_ + count});
    buffer_.resize_and_overwrite(size, [](char*, std::size_t whole) { return whole; });
  }
  return buffer_.data() + size_;
}

void JsonWriter::append(std::string_view characters) {
  char* const room = roomFor(characters.size());
  std::memcpy(room, characters.data(), characters.size());
  size_ += characters.size();
}

}  // namespace corvane
