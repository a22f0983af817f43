#include "corvane/platform/foundation/json_writer.h"

#include <simdjson.h>

#include <array>
#include <charconv>
#include <utility>

#include "corvane/platform/foundation/coding_error.h"

namespace corvane {

namespace {

bool needsEscape(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

}  // namespace

void JsonWriter::key(std::string_view name) {
  separate();
  quoted(name);
  text_ += ':';
  needsComma_ = false;
}

void JsonWriter::text(std::string_view value) {
  if (!simdjson::validate_utf8(value)) {
    throw EncodingError(EncodingError::Kind::invalidValue, {}, "The text is not valid UTF-8.");
  }
  separate();
  quoted(value);
}

void JsonWriter::integer(std::int64_t value) {
  separate();
  std::array<char, 24> digits{};
  text_.append(digits.data(), std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr);
}

void JsonWriter::boolean(bool value) {
  separate();
  text_ += value ? "true" : "false";
}

std::string JsonWriter::take() {
  needsComma_ = false;
  return std::exchange(text_, {});
}

void JsonWriter::beginContainer(char bracket) {
  separate();
  text_ += bracket;
  needsComma_ = false;
}

void JsonWriter::endContainer(char bracket) {
  text_ += bracket;
  needsComma_ = true;
}

void JsonWriter::separate() {
  if (needsComma_) text_ += ',';
  needsComma_ = true;
}

void JsonWriter::quoted(std::string_view text) {
  text_ += '"';
  while (!text.empty()) {
    std::size_t plain = 0;
    while (plain < text.size() && !needsEscape(text[plain])) ++plain;
    text_ += text.substr(0, plain);
    text.remove_prefix(plain);
    if (text.empty()) break;
    const auto character = static_cast<unsigned char>(text.front());
    text.remove_prefix(1);
    switch (character) {
      case '"':
        text_ += "\\\"";
        break;
      case '\\':
        text_ += "\\\\";
        break;
      case '\n':
        text_ += "\\n";
        break;
      case '\r':
        text_ += "\\r";
        break;
      case '\t':
        text_ += "\\t";
        break;
      default: {
        constexpr std::string_view hex = "0123456789abcdef";
        text_ += "\\u00";
        text_ += hex[character >> 4U];
        text_ += hex[character & 0xFU];
      }
    }
  }
  text_ += '"';
}

}  // namespace corvane
