#include "tools/json_syntax.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "tools/printable_text.h"

namespace corvane::tools {

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view blanks = " \t\r\n";

/// Reads one value with a stack of its own, so that no depth of nesting exhausts ours.
class SyntaxScanner {
 public:
  explicit SyntaxScanner(std::string_view text) : text_(text) {}

  std::optional<SyntaxError> run() {
    while (true) {
      skipBlanks();
      if (next_ == Next::separator && open_.empty()) return std::nullopt;
      if (!step()) break;
    }
    return SyntaxError{offset_, expected_, open_.empty() ? std::nullopt : std::optional(open_.back())};
  }

 private:
  enum class Next { value, elementOrEnd, nameOrEnd, name, colon, separator };

  bool step() {
    switch (next_) {
      case Next::value:
        return takeValue("a value");
      case Next::elementOrEnd:
        return takeEnd(']') || takeValue("a value or ']'");
      case Next::nameOrEnd:
        return takeEnd('}') || takeName("a name in double quotes or '}'");
      case Next::name:
        return takeName("a name in double quotes");
      case Next::colon:
        next_ = Next::value;
        return take(':') || fails("':'");
      case Next::separator:
        return takeSeparator();
    }
    std::unreachable();
  }

  [[nodiscard]] char current() const { return offset_ < text_.size() ? text_[offset_] : '\0'; }
  [[nodiscard]] bool isAtAnyOf(std::string_view characters) const {
    return offset_ < text_.size() && characters.contains(text_[offset_]);
  }

  void skipBlanks() { offset_ = std::min(text_.find_first_not_of(blanks, offset_), text_.size()); }

  bool take(char character) {
    if (offset_ == text_.size() || text_[offset_] != character) return false;
    ++offset_;
    return true;
  }

  bool fails(std::string expected) {
    expected_ = std::move(expected);
    return false;
  }

  bool takeEnd(char bracket) {
    if (!take(bracket)) return false;
    open_.pop_back();
    next_ = Next::separator;
    return true;
  }

  bool takeName(const char* expected) {
    next_ = Next::colon;
    return current() == '"' ? takeText() : fails(expected);
  }

  bool takeSeparator() {
    const bool isObject = text_[open_.back()] == '{';
    if (takeEnd(isObject ? '}' : ']')) return true;
    next_ = isObject ? Next::name : Next::value;
    return take(',') || fails(isObject ? "',' or '}'" : "',' or ']'");
  }

  bool takeValue(const char* expected) {
    next_ = Next::separator;
    if (current() == '"') return takeText();
    if (isAtAnyOf("{[")) {
      // The parser's own limit.
      constexpr std::size_t deepest = 1024;
      if (open_.size() == deepest) return fails("at most 1024 levels of objects and arrays");
      next_ = current() == '{' ? Next::nameOrEnd : Next::elementOrEnd;
      open_.push_back(offset_++);
      return true;
    }
    if (isAtAnyOf("-0123456789")) return takeNumber();
    for (const std::string_view word : {"true", "false", "null"}) {
      if (!text_.substr(offset_).starts_with(word)) continue;
      offset_ += word.size();
      return true;
    }
    return fails(expected);
  }

  bool takeText() {
    for (++offset_; offset_ < text_.size(); ++offset_) {
      const char character = text_[offset_];
      if (static_cast<unsigned char>(character) < ' ') {
        return fails(character == '\n' || character == '\r' ? "'\"' at the end of the text"
                                                            : "an escape for the control character");
      }
      if (character == '"') return take('"');
      if (character == '\\' && !takeEscape()) return false;
    }
    return fails("'\"' at the end of the text");
  }

  /// Ends at the last character of the escape.
  bool takeEscape() {
    ++offset_;
    if (!isAtAnyOf("\"\\/bfnrtu")) return fails("one of \" \\ / b f n r t u after a backslash");
    if (current() != 'u') return true;
    for (std::size_t count = 0; count < 4; ++count) {
      ++offset_;
      if (!isAtAnyOf("0123456789abcdefABCDEF")) return fails("four hexadecimal digits after \\u");
    }
    return true;
  }

  bool takeNumber() {
    take('-');
    // Nothing follows a zero but a fraction or an exponent.
    if (!take('0') && !takeDigits()) return false;
    if (take('.') && !takeDigits()) return false;
    if (take('e') || take('E')) {
      if (!take('+')) take('-');
      if (!takeDigits()) return false;
    }
    return true;
  }

  bool takeDigits() {
    if (!isAtAnyOf(digits)) return fails("a digit");
    offset_ = std::min(text_.find_first_not_of(digits, offset_), text_.size());
    return true;
  }

  std::string_view text_;
  std::size_t offset_ = 0;
  Next next_ = Next::value;
  std::vector<std::size_t> open_;
  std::string expected_;
};

/// Walks over a text that is known to be good.
class Cursor {
 public:
  Cursor(std::string_view text, std::size_t offset) : text_(text), offset_(offset) { skipBlanks(); }

  [[nodiscard]] std::size_t offset() const { return offset_; }

  /// Where the member or the element begins.
  std::optional<std::size_t> find(const CodingKey& key) {
    const auto* const index = std::get_if<std::size_t>(&key);
    if (text_[offset_] != (index != nullptr ? '[' : '{')) return std::nullopt;
    std::optional<std::size_t> found;
    move(1);
    for (std::size_t count = 0; text_[offset_] != ']' && text_[offset_] != '}'; ++count) {
      bool isWanted = index != nullptr && *index == count;
      if (index == nullptr) {
        const std::size_t begin = offset_ + 1;
        skipValue();
        // A name that is written with escapes is not found, which only makes the place less exact.
        isWanted = text_.substr(begin).starts_with(std::get<std::string>(key) + '"');
        move(1);
      }
      // Of members that occur twice the last one counts.
      if (isWanted) found = offset_;
      skipValue();
      if (text_[offset_] == ',') move(1);
    }
    return found;
  }

 private:
  void skipBlanks() { offset_ = std::min(text_.find_first_not_of(blanks, offset_), text_.size()); }

  void move(std::size_t count) {
    offset_ += count;
    skipBlanks();
  }

  void skipValue() {
    std::size_t depth = 0;
    do {
      const char character = text_[offset_];
      if (character == '"') {
        while (text_[++offset_] != '"') offset_ += text_[offset_] == '\\' ? 1U : 0U;
        move(1);
      } else if (character == '{' || character == '[') {
        ++depth;
        move(1);
      } else if (character == '}' || character == ']') {
        --depth;
        move(1);
      } else if (character == ',' || character == ':') {
        move(1);
      } else {
        offset_ = std::min(text_.find_first_of(" \t\r\n,:]}", offset_), text_.size());
        skipBlanks();
      }
    } while (depth > 0);
  }

  std::string_view text_;
  std::size_t offset_;
};

std::string describeFound(std::string_view text, std::size_t offset) {
  if (offset >= text.size()) return "the end of the file";
  if (text[offset] == '\n' || text[offset] == '\r') return "the end of the line";
  std::size_t size = 1;
  while (offset + size < text.size() && (static_cast<unsigned char>(text[offset + size]) & 0xc0U) == 0x80U) ++size;
  return "'" + printable(text.substr(offset, size)) + "'";
}

}  // namespace

std::optional<SyntaxError> findSyntaxError(std::string_view text) { return SyntaxScanner(text).run(); }

std::string describeMismatch(std::string_view expected, std::string_view text, std::size_t offset) {
  return "expected " + std::string(expected) + ", found " + describeFound(text, offset);
}

std::string describe(const SyntaxError& error, std::string_view text, const TextPosition& begin) {
  std::string description = describeMismatch(error.expected, text, error.offset);
  if (error.container) {
    const TextPosition container = positionBehind(begin, text.substr(0, *error.container));
    description += std::string(" in the ") + (text[*error.container] == '{' ? "object" : "array") + " from " +
                   std::to_string(container.line) + ':' + std::to_string(container.column) + " on";
  }
  return description;
}

std::size_t findOffset(std::string_view text, const CodingPath& path) {
  Cursor cursor(text, 0);
  for (const CodingKey& key : path) {
    const auto found = Cursor(cursor).find(key);
    if (!found) break;
    cursor = Cursor(text, *found);
  }
  return cursor.offset();
}

}  // namespace corvane::tools
