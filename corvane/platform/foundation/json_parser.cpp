// JSON text to JsonValue: simdjson reads and validates, the flat document is built from what it found.
#include <simdjson.h>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <new>
#include <string>
#include <vector>

#include "corvane/platform/foundation/json_document.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane {

namespace {

using json_detail::Document;
using json_detail::Node;
using json_detail::NumberForm;

// Parsers and builders keep their buffers; beyond this size they would keep more than a page message ever needs.
constexpr std::size_t largestReusedText = 64 * 1024;

/// Collects the nodes and texts of one document. Texts are numbered in the order of the document, keys included.
class DocumentBuilder {
 public:
  explicit DocumentBuilder(const std::vector<std::size_t>& illFormedTexts)
      : nextIllFormed_(illFormedTexts.begin()), endIllFormed_(illFormedTexts.end()) {}

  struct Buffers {
    std::vector<Node> nodes;
    std::string texts;
  };

  /// Recursion is bounded by the depth that the parser lets through.
  bool add(simdjson::dom::element element, Buffers& buffers) {
    using simdjson::dom::element_type;
    switch (element.type()) {
      case element_type::NULL_VALUE: buffers.nodes.push_back({}); return true;
      case element_type::BOOL:
        buffers.nodes.push_back({.kind = JsonKind::boolean, .payload = element.get_bool().value_unsafe()});
        return true;
      case element_type::INT64:
        addNumber(NumberForm::signedInteger, static_cast<std::uint64_t>(element.get_int64().value_unsafe()), buffers);
        return true;
      case element_type::UINT64:
        addNumber(NumberForm::unsignedInteger, element.get_uint64().value_unsafe(), buffers);
        return true;
      case element_type::DOUBLE:
        addNumber(NumberForm::real, std::bit_cast<std::uint64_t>(element.get_double().value_unsafe()), buffers);
        return true;
      case element_type::STRING: return addText(element.get_string().value_unsafe(), buffers);
      case element_type::ARRAY:
        return addContainer(JsonKind::array, buffers, [&](Node& container) {
          for (const simdjson::dom::element child : simdjson::dom::array(element.get_array().value_unsafe())) {
            ++container.size;
            container.isWellFormed &= add(child, buffers);
          }
        });
      case element_type::OBJECT:
        return addContainer(JsonKind::object, buffers, [&](Node& container) {
          for (const auto member : simdjson::dom::object(element.get_object().value_unsafe())) {
            ++container.size;
            container.isWellFormed &= addText(member.key, buffers);
            container.isWellFormed &= add(member.value, buffers);
          }
        });
    }
    std::unreachable();
  }

  static const Document* build(const Buffers& buffers) {
    const std::size_t nodeBytes = buffers.nodes.size() * sizeof(Node);
    void* const block = ::operator new(sizeof(Document) + nodeBytes + buffers.texts.size());
    auto* const document = new (block) Document(buffers.nodes.size());
    Node* const nodes = document->nodes();
    std::ranges::uninitialized_copy(buffers.nodes, std::span(nodes, buffers.nodes.size()));
    char* const texts = reinterpret_cast<char*>(nodes) + nodeBytes;
    std::memcpy(texts, buffers.texts.data(), buffers.texts.size());
    for (std::size_t index = 0; index < buffers.nodes.size(); ++index) {
      // While collecting, a text's payload counts from the first text; in the block it counts from the node itself.
      if (nodes[index].kind == JsonKind::string) nodes[index].payload += nodeBytes - index * sizeof(Node);
    }
    return document;
  }

 private:
  static void addNumber(NumberForm form, std::uint64_t bits, Buffers& buffers) {
    buffers.nodes.push_back({.kind = JsonKind::number, .form = form, .payload = bits});
  }

  bool addText(std::string_view text, Buffers& buffers) {
    const bool isIllFormed = nextIllFormed_ != endIllFormed_ && *nextIllFormed_ == textCount_;
    if (isIllFormed) ++nextIllFormed_;
    ++textCount_;
    buffers.nodes.push_back({.kind = JsonKind::string,
                             .isWellFormed = !isIllFormed,
                             .size = static_cast<std::uint32_t>(text.size()),
                             .payload = buffers.texts.size()});
    buffers.texts.append(text);
    return !isIllFormed;
  }

  template <class AddContents>
  static bool addContainer(JsonKind kind, Buffers& buffers, AddContents addContents) {
    const std::size_t index = buffers.nodes.size();
    Node container{.kind = kind};
    buffers.nodes.push_back(container);
    addContents(container);
    container.payload = buffers.nodes.size() - index;
    buffers.nodes[index] = container;
    return container.isWellFormed;
  }

  std::vector<std::size_t>::const_iterator nextIllFormed_;
  std::vector<std::size_t>::const_iterator endIllFormed_;
  std::size_t textCount_ = 0;
};

/// A copy of a JSON text in which simdjson can read what it refuses although script engines write it: integers
/// beyond 64 bits got a fraction, and halves of surrogate pairs became U+FFFD.
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
  /// Which texts of the document lost half a surrogate pair, counted in the order of their quotes.
  [[nodiscard]] const std::vector<std::size_t>& illFormedTexts() const { return illFormedTexts_; }

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
    take(length);
    if (number.find_first_of(".eE") != std::string_view::npos) return;
    std::uint64_t magnitude = 0;
    const bool isNegative = number.starts_with('-');
    const std::string_view digits = number.substr(isNegative ? 1 : 0);
    const bool fits =
        std::from_chars(digits.data(), digits.data() + digits.size(), magnitude).ec != std::errc::result_out_of_range;
    constexpr std::uint64_t largestNegative = 1ULL << 63;
    if (!fits || (isNegative && magnitude > largestNegative)) copy_ += ".0";
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
    if (isIllFormed) illFormedTexts_.push_back(textCount_);
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
  std::vector<std::size_t> illFormedTexts_;
  std::size_t textCount_ = 0;
};

DecodingError notJson(const char* reason) {
  return {DecodingError::Kind::dataCorrupted, "JSON", {}, std::string("The given data was not valid JSON: ") + reason};
}

struct ParseTools {
  simdjson::dom::parser parser;
  DocumentBuilder::Buffers buffers;
};

std::expected<const Document*, simdjson::error_code> parseDocument(std::string_view text, ParseTools& tools,
                                                                   const std::vector<std::size_t>& illFormedTexts) {
  simdjson::dom::element root;
  if (const auto error = tools.parser.parse(text.data(), text.size()).get(root)) return std::unexpected(error);
  tools.buffers.nodes.clear();
  tools.buffers.texts.clear();
  DocumentBuilder(illFormedTexts).add(root, tools.buffers);
  return DocumentBuilder::build(tools.buffers);
}

std::expected<const Document*, simdjson::error_code> parseDocument(std::string_view text, ParseTools& tools) {
  static const std::vector<std::size_t> none;
  auto document = parseDocument(text, tools, none);
  if (document || (document.error() != simdjson::NUMBER_ERROR && document.error() != simdjson::STRING_ERROR)) {
    return document;
  }
  const ReadableCopy readable(text);
  return parseDocument(readable.text(), tools, readable.illFormedTexts());
}

}  // namespace

std::expected<JsonValue, DecodingError> JsonValue::parse(std::string_view text) {
  if (text.size() >= std::numeric_limits<std::uint32_t>::max()) {
    return std::unexpected(notJson("it is longer than 4 GiB"));
  }
  const auto document = [&] {
    if (text.size() > largestReusedText) {
      ParseTools tools;
      return parseDocument(text, tools);
    }
    thread_local ParseTools tools;
    return parseDocument(text, tools);
  }();
  if (!document) return std::unexpected(notJson(simdjson::error_message(document.error())));
  return JsonValue(*document);
}

}  // namespace corvane
