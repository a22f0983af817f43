// JSON text to JsonValue: simdjson reads and validates, the flat document is built from what it found.
#include <simdjson.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

#include "corvane/platform/foundation/json_document.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane {

namespace {

using json_detail::Document;
using json_detail::Node;
using json_detail::NumberForm;

// A parser keeps its buffers; beyond this size they would keep more than a page message ever needs.
constexpr std::size_t largestReusedText = std::size_t{64} * 1024;

/// What a document holds that the parser does not take, by its index among the texts (keys included) and among the
/// numbers of the document.
struct Oddities {
  std::vector<std::size_t> illFormedTexts;
  std::vector<std::size_t> overflowingNumbers;
  std::vector<std::size_t> largeIntegers;
};

/// Tells for one thing after the other whether its index is on a list.
class IndexCounter {
 public:
  explicit IndexCounter(const std::vector<std::size_t>& indexes) : next_(indexes.begin()), end_(indexes.end()) {}

  bool isNextListed() {
    // Almost always there is no list at all, and nothing to count for.
    if (next_ == end_) return false;
    const bool isListed = *next_ == count_;
    if (isListed) ++next_;
    ++count_;
    return isListed;
  }

 private:
  std::vector<std::size_t>::const_iterator next_;
  std::vector<std::size_t>::const_iterator end_;
  std::size_t count_ = 0;
};

/// Copies the texts of page messages, most of which are a few characters long, without a call for each.
void copyText(char* to, std::string_view text) {
  const char* const from = text.data();
  const std::size_t size = text.size();
  // The two halves of a fixed size overlap as far as the text is shorter than both.
  const auto copyHalves = [&]<std::size_t half>(std::integral_constant<std::size_t, half>) {
    std::memcpy(to, from, half);
    std::memcpy(to + size - half, from + size - half, half);
  };
  if (size > 32) {
    std::memcpy(to, from, size);
  } else if (size >= 16) {
    copyHalves(std::integral_constant<std::size_t, 16>{});
  } else if (size >= 8) {
    copyHalves(std::integral_constant<std::size_t, 8>{});
  } else if (size >= 4) {
    copyHalves(std::integral_constant<std::size_t, 4>{});
  } else {
    for (std::size_t index = 0; index < size; ++index) to[index] = from[index];
  }
}

/// Builds one document in a block that is as large as its text can make it. Memory that is never written costs little,
/// and a second pass would cost more.
class DocumentBuilder {
 public:
  DocumentBuilder(std::size_t textSize, const Oddities& oddities)
      : illFormedTexts_(oddities.illFormedTexts),
        overflowingNumbers_(oddities.overflowingNumbers),
        largeIntegers_(oddities.largeIntegers) {
    // Every value takes a character and, but for the last, something that ends it.
    const std::size_t mostNodes = textSize / 2 + 1;
    void* const block = ::operator new(sizeof(Document) + mostNodes * sizeof(Node) + textSize);
    document_ = new (block) Document;
    nextNode_ = document_->nodes();
    nextText_ = reinterpret_cast<char*>(nextNode_ + mostNodes);
  }

  const Document* build(simdjson::dom::element root) {
    add(root);
    return document_;
  }

 private:
  /// Tells whether everything in the value is well-formed. Recursion is bounded by the depth that the parser lets
  /// through.
  bool add(simdjson::dom::element element) {
    using simdjson::dom::element_type;
    switch (element.type()) {
      case element_type::NULL_VALUE:
        append({});
        return true;
      case element_type::BOOL:
        append({.kind = JsonKind::boolean, .payload = element.get_bool().value_unsafe()});
        return true;
      case element_type::INT64:
        addNumber(NumberForm::signedInteger, static_cast<std::uint64_t>(element.get_int64().value_unsafe()));
        return true;
      case element_type::UINT64:
        addNumber(NumberForm::unsignedInteger, element.get_uint64().value_unsafe());
        return true;
      case element_type::DOUBLE:
        addNumber(NumberForm::real, std::bit_cast<std::uint64_t>(element.get_double().value_unsafe()));
        return true;
      case element_type::STRING:
        return addText(element.get_string().value_unsafe());
      case element_type::ARRAY:
        return addContainer(JsonKind::array, [&](Node& container) {
          for (const simdjson::dom::element child : simdjson::dom::array(element.get_array().value_unsafe())) {
            ++container.size;
            container.isWellFormed &= add(child);
          }
        });
      case element_type::OBJECT:
        return addContainer(JsonKind::object, [&](Node& container) {
          for (const auto member : simdjson::dom::object(element.get_object().value_unsafe())) {
            ++container.size;
            container.isWellFormed &= addText(member.key);
            container.isWellFormed &= add(member.value);
          }
        });
    }
    std::unreachable();
  }

  Node* append(const Node& node) { return new (nextNode_++) Node(node); }

  void addNumber(NumberForm form, std::uint64_t bits) {
    if (overflowingNumbers_.isNextListed()) {
      // The zero in its place has its sign.
      bits = std::bit_cast<std::uint64_t>(
          std::copysign(std::numeric_limits<double>::infinity(), std::bit_cast<double>(bits)));
    }
    if (largeIntegers_.isNextListed()) form = NumberForm::largeInteger;
    append({.kind = JsonKind::number, .form = form, .payload = bits});
  }

  bool addText(std::string_view text) {
    const bool isIllFormed = illFormedTexts_.isNextListed();
    append({.kind = JsonKind::string,
            .isWellFormed = !isIllFormed,
            .size = static_cast<std::uint32_t>(text.size()),
            .payload = static_cast<std::uint64_t>(nextText_ - reinterpret_cast<char*>(nextNode_))});
    copyText(nextText_, text);
    nextText_ += text.size();
    return !isIllFormed;
  }

  template <class AddContents>
  bool addContainer(JsonKind kind, AddContents addContents) {
    Node* const container = append({.kind = kind});
    addContents(*container);
    container->payload = static_cast<std::uint64_t>(nextNode_ - container);
    return container->isWellFormed;
  }

  Document* document_;
  Node* nextNode_;
  char* nextText_;
  IndexCounter illFormedTexts_;
  IndexCounter overflowingNumbers_;
  IndexCounter largeIntegers_;
};

/// Whether a text is a number by the grammar of JSON.
bool isNumber(std::string_view text) {
  const auto takeDigits = [&] {
    const std::size_t length = std::min(text.find_first_not_of("0123456789"), text.size());
    text.remove_prefix(length);
    return length;
  };
  if (text.starts_with('-')) text.remove_prefix(1);
  const bool hasLeadingZero = text.starts_with('0');
  const std::size_t wholeDigits = takeDigits();
  if (wholeDigits == 0 || (hasLeadingZero && wholeDigits > 1)) return false;
  if (text.starts_with('.')) {
    text.remove_prefix(1);
    if (takeDigits() == 0) return false;
  }
  if (text.starts_with('e') || text.starts_with('E')) {
    text.remove_prefix(1);
    if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
    if (takeDigits() == 0) return false;
  }
  return text.empty();
}

/// A copy of a JSON text in which simdjson can read what it refuses although script engines write it. Integers
/// beyond 64 bits got a fraction, numbers beyond doubles became 0, and halves of surrogate pairs became U+FFFD.
class ReadableCopy {
 public:
  explicit ReadableCopy(std::string_view text) : rest_(text) {
    copy_.reserve(text.size() + 16);
    while (!rest_.empty()) {
      const char next = rest_.front();
      if (next == '"') {
        copyText();
      } else if (next == '-' || isDigit(next)) {
        copyNumber();
      } else {
        take(1);
      }
    }
  }

  [[nodiscard]] const std::string& text() const { return copy_; }
  [[nodiscard]] const Oddities& oddities() const { return oddities_; }

 private:
  static bool isDigit(char character) { return character >= '0' && character <= '9'; }

  void take(std::size_t count) {
    count = std::min(count, rest_.size());
    copy_.append(rest_.substr(0, count));
    rest_.remove_prefix(count);
  }

  void copyNumber() {
    const std::size_t length = std::min(rest_.find_first_not_of("+-.0123456789eE"), rest_.size());
    const std::string_view number = rest_.substr(0, length);
    rest_.remove_prefix(length);
    const bool isLarge = isBeyond64Bits(number);
    if (isLarge) oddities_.largeIntegers.push_back(numberCount_);
    const std::string readable = std::string(number) + (isLarge ? ".0" : "");
    if (isNumber(number) && parser_.parse(readable).error() == simdjson::NUMBER_ERROR) {
      // By the grammar a number, in the form that suits the parser, and refused all the same: it is too large.
      oddities_.overflowingNumbers.push_back(numberCount_);
      copy_ += number.starts_with('-') ? "-0.0" : "0.0";
    } else {
      copy_ += readable;
    }
    ++numberCount_;
  }

  static bool isBeyond64Bits(std::string_view number) {
    if (number.find_first_of(".eE") != std::string_view::npos) return false;
    std::uint64_t magnitude = 0;
    const bool isNegative = number.starts_with('-');
    const std::string_view digits = number.substr(isNegative ? 1 : 0);
    const bool fits =
        std::from_chars(digits.data(), digits.data() + digits.size(), magnitude).ec != std::errc::result_out_of_range;
    constexpr std::uint64_t largestNegative = 1ULL << 63;
    return !fits || (isNegative && magnitude > largestNegative);
  }

  void copyText() {
    take(1);
    bool isIllFormed = false;
    while (!rest_.empty() && rest_.front() != '"') {
      if (rest_.front() != '\\') {
        take(1);
        continue;
      }
      const unsigned unit = escapedUnit(rest_);
      if (isHighSurrogate(unit) && isLowSurrogate(escapedUnit(rest_.substr(6)))) {
        take(12);
      } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
        copy_ += "\\ufffd";
        rest_.remove_prefix(6);
        isIllFormed = true;
      } else {
        take(2);
      }
    }
    take(1);
    if (isIllFormed) oddities_.illFormedTexts.push_back(textCount_);
    ++textCount_;
  }

  /// The code unit of a \u escape at the beginning of the text, or 0 where there is none.
  static unsigned escapedUnit(std::string_view text) {
    if (text.size() < 6 || text[0] != '\\' || text[1] != 'u') return 0;
    unsigned unit = 0;
    const char* const end = text.data() + 6;
    return std::from_chars(text.data() + 2, end, unit, 16).ptr == end ? unit : 0;
  }

  static bool isHighSurrogate(unsigned unit) { return unit >= 0xD800 && unit < 0xDC00; }
  static bool isLowSurrogate(unsigned unit) { return unit >= 0xDC00 && unit < 0xE000; }

  std::string_view rest_;
  std::string copy_;
  simdjson::dom::parser parser_;
  Oddities oddities_;
  std::size_t textCount_ = 0;
  std::size_t numberCount_ = 0;
};

DecodingError notJson(const char* reason) {
  return {DecodingError::Kind::dataCorrupted, "JSON", {}, std::string("The given data was not valid JSON: ") + reason};
}

using ParsedDocument = std::expected<const Document*, simdjson::error_code>;

ParsedDocument parseDocument(std::string_view text, simdjson::dom::parser& parser, const Oddities& oddities) {
  simdjson::dom::element root;
  if (const auto error = parser.parse(text.data(), text.size()).get(root)) return std::unexpected(error);
  return DocumentBuilder(text.size(), oddities).build(root);
}

ParsedDocument parseDocument(std::string_view text, simdjson::dom::parser& parser) {
  const auto document = parseDocument(text, parser, {});
  if (document || (document.error() != simdjson::NUMBER_ERROR && document.error() != simdjson::STRING_ERROR)) {
    return document;
  }
  const ReadableCopy readable(text);
  return parseDocument(readable.text(), parser, readable.oddities());
}

}  // namespace

std::expected<JsonValue, DecodingError> JsonValue::parse(std::string_view text) {
  if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
    return std::unexpected(notJson("it is longer than 4 GiB"));
  }
  const auto document = [&] {
    if (text.size() > largestReusedText) {
      simdjson::dom::parser parser;
      return parseDocument(text, parser);
    }
    thread_local simdjson::dom::parser parser;
    return parseDocument(text, parser);
  }();
  if (!document) return std::unexpected(notJson(simdjson::error_message(document.error())));
  return JsonValue(*document);
}

}  // namespace corvane
