#include "corvane/product/product_coding.h"

#include "corvane/export.h"
#include "corvane/platform/foundation/json_text.h"
#include "corvane/product/product_size.h"

namespace corvane {

namespace {

constexpr std::string_view vendor = "hydratable-product";

/// The text points of all of a variation's lists, one after the other.
void encodeSellingPoints(const Variation& variation, JsonWriter& writer) {
  if (!variation.details()) return;
  bool isOpen = false;
  for (const Detail& detail : *variation.details()) {
    const auto* bullets = std::get_if<Detail::Bullets>(&detail.value());
    if (bullets == nullptr) continue;
    for (const std::string& point : bullets->points) {
      if (!isOpen) {
        writer.key("uniqueSellingPoints");
        writer.beginArray();
      }
      isOpen = true;
      writer.text(point);
    }
  }
  if (isOpen) writer.endArray();
}

/// What the page shows as a table: the comparable attributes that have a name.
void encodeSpecs(const Variation& variation, JsonWriter& writer) {
  if (!variation.comparableAttributes()) return;
  bool isOpen = false;
  for (const ComparableVariationAttribute& attribute : *variation.comparableAttributes()) {
    if (!attribute.name()) continue;
    if (!isOpen) {
      writer.key("specs");
      writer.beginArray();
    }
    isOpen = true;
    writer.beginObject();
    json_detail::encodeMember("name", *attribute.name(), writer);
    json_detail::encodeMember("value", attribute.option(), writer);
    writer.endObject();
  }
  if (isOpen) writer.endArray();
}

/// The page reads some of a variation a second time, in another shape.
void encodeMeta(const Variation& variation, JsonWriter& writer) {
  writer.key("meta");
  writer.beginObject();
  writer.key("data");
  writer.beginObject();
  if (variation.subtitle()) json_detail::encodeMember("subtitle", *variation.subtitle(), writer);
  encodeSellingPoints(variation, writer);
  if (variation.rating()) json_detail::encodeMember("rating", *variation.rating(), writer);
  encodeSpecs(variation, writer);
  writer.endObject();
  writer.endObject();
}

}  // namespace

namespace product_coding_detail {

DecodingError asDecodingError(const ProductSpecError& error) {
  return {DecodingError::Kind::typeMismatch, "VariationAttribute", {}, error.debugDescription()};
}

DecodingError unsupportedVersion(std::int64_t version) {
  return {DecodingError::Kind::dataCorrupted,
          "Product",
          {},
          "product spec version " + std::to_string(version) + " not supported"};
}

}  // namespace product_coding_detail

void JsonCoding<Detail>::encode(const Detail& detail, JsonWriter& writer) {
  writer.beginObject();
  detail.match(
      [&](const Detail::Bullets& bullets) {
        json_detail::encodeMember("detailType", std::string(bulletsType), writer);
        json_detail::encodeMember(Content::key, bullets.points, writer);
      },
      [&](const Detail::Paragraph& paragraph) {
        json_detail::encodeMember("detailType", std::string(paragraphType), writer);
        json_detail::encodeMember(Content::key, paragraph.text, writer);
      },
      [](const Detail::Unknown&) {});
  writer.endObject();
}

void JsonCoding<Variation>::encode(const Variation& variation, JsonWriter& writer) {
  writer.beginObject();
  json_detail::encodeMembers(variation.fields_, JsonFields<VariationFields>::fields, writer);
  writer.key("relatedProducts");
  writer.beginArray();
  writer.endArray();
  encodeMeta(variation, writer);
  writer.endObject();
}

void JsonCoding<Product>::encode(const Product& product, JsonWriter& writer) {
  if (product.variations().empty()) throw writer.errorHere("Need at least one(1) variation");
  writer.reserve(estimatedJsonSize(product));
  writer.beginObject();
  json_detail::encodeMember("currency", product.currency(), writer);
  json_detail::encodeMember("locale", product.locale(), writer);
  writer.key("vendor");
  writer.text(vendor);
  writer.key("_schemaVersion");
  writer.integer(schemaVersion);
  json_detail::encodeMember("product", product.fields_, writer);
  writer.endObject();
}

template CORVANE_EXPORT std::string encodeJson(const Product& record);
template CORVANE_EXPORT Product decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const Variation& record);
template CORVANE_EXPORT Variation decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const AttributeDefinition& record);
template CORVANE_EXPORT AttributeDefinition decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const AttributeDefinitionOption& record);
template CORVANE_EXPORT AttributeDefinitionOption decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const VariationAttribute& record);
template CORVANE_EXPORT VariationAttribute decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const ComparableVariationAttribute& record);
template CORVANE_EXPORT ComparableVariationAttribute decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const Price& record);
template CORVANE_EXPORT Price decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const Rating& record);
template CORVANE_EXPORT Rating decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const Detail& record);
template CORVANE_EXPORT Detail decodeJson(std::string_view text);

}  // namespace corvane
