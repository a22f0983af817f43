#include "tools/product_check.h"

#include <simdjson.h>

#include <algorithm>
#include <new>
#include <utility>

#include "corvane/platform/foundation/json_dom_view.h"
#include "corvane/platform/foundation/json_writer.h"
#include "corvane/platform/foundation/utf8.h"
#include "corvane/product/product_size.h"
#include "tools/contradictions.h"
#include "tools/dropped_values.h"
#include "tools/json_syntax.h"

namespace corvane::tools {

static_assert(InputWindow::padding >= simdjson::SIMDJSON_PADDING);

namespace {

constexpr std::size_t largestText = std::size_t{256} * 1024 * 1024;

/// The first byte of a text that is not UTF-8, or the text's end.
std::size_t utf8ErrorOffset(std::string_view text) {
  std::size_t offset = 0;
  while (offset < text.size()) {
    const auto first = static_cast<unsigned char>(text[offset]);
    const std::size_t size = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    if (!isValidUtf8(text.substr(offset, size))) break;
    offset += size;
  }
  return std::min(offset, text.size());
}

}  // namespace

class ProductCheck::Decoder {
 public:
  explicit Decoder(Output output) : output_(output) {}

  CheckedProduct check(const ProductText& product) {
    CheckedProduct checked;
    try {
      simdjson::dom::element root;
      const auto error = parser_.parse(product.text.data(), product.text.size(), false).get(root);
      if (error == simdjson::SUCCESS) {
        decode(JsonDomView(root), product, checked);
      } else if (const auto value = JsonValue::parse(product.text)) {
        // What the parser refuses may still be read by way of a document, as the library does.
        decode(JsonView(*value), product, checked);
      } else {
        addSyntaxError(product, value.error().debugDescription(), checked);
      }
    } catch (const std::bad_alloc&) {
      refuse(product, {}, "The product takes more memory than there is.", checked);
    }
    return checked;
  }

 private:
  template <class Source>
  void decode(Source root, const ProductText& text, CheckedProduct& checked) {
    try {
      const auto product = JsonCoding<Product>::decode(root);
      if (product.variations().empty()) {
        return refuse(text, {"product", "variations"}, "Need at least one(1) variation", checked);
      }
      if (estimatedJsonSize(product) > largestText) {
        return refuse(text, {"product", "variations"},
                      "So many variations share a value that the product would take more than 256 MiB.", checked);
      }
      // Nothing else that was read can be impossible to write.
      if (output_ == Output::text) {
        JsonWriter writer;
        JsonCoding<Product>::encode(product, writer);
        checked.text = writer.take();
      }
      for (const auto& value : DroppedValues<Source>::find(root, product)) {
        add({.severity = Severity::warning, .kind = FindingKind::dropped, .message = "Left out: " + value.reason}, text,
            value.path, checked);
      }
    } catch (const DecodingError& error) {
      const CodingPath& path = error.codingPath();
      refuse(text, path.empty() ? contradictionPath(root, error.debugDescription()) : path, error.debugDescription(),
             checked);
    } catch (const ProductSpecError& error) {
      refuse(text, {"product", "attributes"}, error.debugDescription(), checked);
    }
  }

  static void addSyntaxError(const ProductText& product, const std::string& reason, CheckedProduct& checked) {
    Finding finding{.kind = FindingKind::syntax, .message = reason, .product = product.number};
    std::size_t offset = utf8ErrorOffset(product.text);
    const bool isUtf8 = offset == product.text.size();
    const auto error = findSyntaxError(product.text);
    if (error && (isUtf8 || error->offset < offset)) {
      offset = error->offset;
      finding.message = describe(*error, product.text, product.begin);
    } else if (isUtf8) {
      offset = 0;
    } else {
      finding.message = "the text is not valid UTF-8";
    }
    finding.position = positionBehind(product.begin, product.text.substr(0, offset));
    checked.findings.push_back(std::move(finding));
  }

  static void refuse(const ProductText& product, const CodingPath& path, const std::string& reason,
                     CheckedProduct& checked) {
    add({.message = reason}, product, path, checked);
  }

  static void add(Finding finding, const ProductText& product, const CodingPath& path, CheckedProduct& checked) {
    finding.path = toText(path);
    finding.position = positionBehind(product.begin, product.text.substr(0, findOffset(product.text, path)));
    finding.product = product.number;
    checked.findings.push_back(std::move(finding));
  }

  Output output_;
  simdjson::dom::parser parser_;
};

ProductCheck::ProductCheck(Output output) : decoder_(std::make_unique<Decoder>(output)) {}
ProductCheck::~ProductCheck() = default;

CheckedProduct ProductCheck::check(const ProductText& product) { return decoder_->check(product); }

}  // namespace corvane::tools
