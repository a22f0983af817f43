#include "tools/product_reader.h"

#include <algorithm>

#include "tools/value_framer.h"

namespace corvane::tools {

namespace {

constexpr std::string_view blanks = " \t\r\n";
constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// An object's text up to the end of its first name.
std::string_view firstName(std::string_view text) {
  const std::size_t begin = text.find('"');
  return text.substr(0, begin == std::string_view::npos ? 0 : text.find('"', begin + 1));
}

}  // namespace

ProductReader::NextItem ProductReader::next() {
  window_.consume(std::exchange(pending_, 0));
  while (true) {
    const auto found = skipBlanks();
    if (!found) return std::unexpected(found.error());
    if (!*found) return endOfFile();
    isSettled_ = true;
    const char character = window_.text().front();
    if (window_.position().byte == 1 && window_.text().starts_with(byteOrderMark)) {
      BrokenText broken{window_.position(), "the file begins with a byte order mark; save it as UTF-8 without one"};
      window_.consume(byteOrderMark.size());
      return broken;
    }
    if (!isInArray_) {
      if (character != '[') return readProduct();
      isInArray_ = true;
      expected_ = Expected::productOrEnd;
      window_.consume(1);
    } else if (character == ']') {
      const bool isEarly = expected_ == Expected::product;
      BrokenText broken = stray("a product");
      isInArray_ = false;
      window_.consume(1);
      if (isEarly) return broken;
    } else if (expected_ != Expected::separator) {
      return readProduct();
    } else if (character == ',') {
      expected_ = Expected::product;
      window_.consume(1);
    } else {
      expected_ = Expected::product;
      BrokenText broken = stray("',' or ']' behind the product");
      // Only the comma is missing.
      if (character == '{') return broken;
      return recover(std::move(broken), 0);
    }
  }
}

std::expected<bool, std::string> ProductReader::skipBlanks() {
  while (true) {
    const std::size_t begin = window_.text().find_first_not_of(blanks);
    window_.consume(std::min(begin, window_.text().size()));
    if (begin != std::string_view::npos) break;
    const auto filled = window_.fill();
    if (!filled || !*filled) return filled;
  }
  // Short pipes may cut a byte order mark.
  while (window_.text().size() < byteOrderMark.size()) {
    const auto filled = window_.fill();
    if (!filled) return filled;
    if (!*filled) break;
  }
  return true;
}

ProductReader::NextItem ProductReader::readProduct() {
  if (const char first = window_.text().front(); first != '{' && first != '[' && first != '"') return readWord();
  ValueFramer framer;
  while (true) {
    const auto state = framer.scan(window_.text());
    if (state == ValueFramer::State::complete) return take(framer.end());
    if (state == ValueFramer::State::broken) break;
    if (window_.text().size() > largestProduct) {
      const auto error = findSyntaxError(window_.text());
      if (error && error->offset < window_.text().size()) return brokenProduct(*error);
      return std::unexpected("a single product is larger than 64 MiB");
    }
    const auto filled = window_.fill();
    if (!filled) return std::unexpected(filled.error());
    if (!*filled) break;
  }
  const auto error = findSyntaxError(window_.text().substr(0, framer.end() + 1));
  return brokenProduct(error.value_or(SyntaxError{framer.end(), "something else"}));
}

ProductReader::NextItem ProductReader::readWord() {
  constexpr std::size_t longestNumber = 1024;
  while (true) {
    const std::string_view text = window_.text();
    const std::size_t end = text.find_first_of(" \t\r\n,:[]{}\"");
    const std::string_view word = text.substr(0, end);
    if (end == std::string_view::npos && text.size() < longestNumber) {
      const auto filled = window_.fill();
      if (!filled) return std::unexpected(filled.error());
      if (*filled) continue;
    }
    // A number or null where a product should stand is for the decoder to refuse.
    if (!word.empty() && !findSyntaxError(word)) return take(word.size());
    return recover(stray(isInArray_ ? "a product" : "a product or an array of products"), 0);
  }
}

ProductText ProductReader::take(std::size_t size) {
  pending_ = size;
  expected_ = Expected::separator;
  return {window_.text().substr(0, size), window_.position(), ++number_};
}

ProductReader::NextItem ProductReader::endOfFile() {
  const bool isNews = !std::exchange(isSettled_, true);
  if (!std::exchange(isInArray_, false) && !isNews) return std::nullopt;
  return stray(isNews ? "a product" : "',' or ']' behind the product");
}

BrokenText ProductReader::stray(std::string_view expected) const {
  return {window_.position(), describeMismatch(expected, window_.text(), 0)};
}

ProductReader::NextItem ProductReader::brokenProduct(const SyntaxError& error) {
  const std::string_view text = window_.text();
  BrokenText broken{positionBehind(window_.position(), text.substr(0, error.offset)),
                    describe(error, text, window_.position()), ++number_};
  return recover(std::move(broken), error.offset);
}

ProductReader::NextItem ProductReader::recover(BrokenText broken, std::size_t offset) {
  constexpr std::size_t longestName = 256;
  expected_ = Expected::productOrEnd;
  if (window_.text().size() < offset + longestName) {
    if (const auto filled = window_.fill(); !filled) return std::unexpected(filled.error());
  }
  const std::size_t lastColumn = window_.position().column;
  const bool isProduct = isProductAt(offset);
  window_.consume(offset);
  if (!isProduct) {
    const std::size_t begin = window_.position().byte;
    if (const auto skipped = skipToProductLine(lastColumn); !skipped) return std::unexpected(skipped.error());
    broken.skippedBytes = window_.position().byte - begin;
  }
  return broken;
}

bool ProductReader::isProductAt(std::size_t offset) const {
  const std::string_view text = window_.text();
  if (offset == 0 || offset >= text.size() || text[offset] != '{') return false;
  // At a deeper level there are other names.
  if (firstName(text) == firstName(text.substr(offset))) return true;
  const std::size_t last = text.find_last_not_of(" \t\r", offset - 1);
  return last != std::string_view::npos && text[last] == '\n' && offset - last <= window_.position().column;
}

std::expected<void, std::string> ProductReader::skipToProductLine(std::size_t lastColumn) {
  std::size_t lineSize = 0;
  while (true) {
    const std::size_t end = window_.text().find('\n');
    if (end != std::string_view::npos) {
      window_.consume(end + 1);
      lineSize = 0;
      const auto isFound = isAtProductLine(lastColumn);
      if (!isFound) return std::unexpected(isFound.error());
      if (*isFound) return {};
      continue;
    }
    lineSize += window_.text().size();
    if (lineSize > largestProduct) return std::unexpected("a single line without a product is larger than 64 MiB");
    window_.consume(window_.text().size());
    const auto filled = window_.fill();
    if (!filled) return std::unexpected(filled.error());
    if (!*filled) {
      isInArray_ = false;
      return {};
    }
  }
}

std::expected<bool, std::string> ProductReader::isAtProductLine(std::size_t lastColumn) {
  while (true) {
    const std::string_view text = window_.text();
    const std::size_t begin = text.find_first_not_of(" \t\r");
    if (begin == std::string_view::npos && text.size() < lastColumn) {
      const auto filled = window_.fill();
      if (!filled || !*filled) return filled;
      continue;
    }
    if (begin == std::string_view::npos || begin >= lastColumn) return false;
    if (text[begin] == ',' && isInArray_) expected_ = Expected::separator;
    return text[begin] == '{' || (isInArray_ ? text[begin] == ']' || text[begin] == ',' : text[begin] == '[');
  }
}

}  // namespace corvane::tools
