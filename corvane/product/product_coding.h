/// The JSON form of products and everything in them.
#pragma once

#include <concepts>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/json_coder.h"
#include "corvane/product/product.h"
#include "corvane/product/product_spec_error.h"

namespace corvane {

template <>
struct JsonFields<Price> {
  static Price blank() { return {{}, 0, {}}; }
  static constexpr auto fields =
      std::tuple{required("currency", &Price::currency_), required("current", &Price::current_),
                 optional("original", &Price::original_)};
};

template <>
struct JsonFields<Rating> {
  static Rating blank() { return {0, 0, {}}; }
  static constexpr auto fields =
      std::tuple{required("rating", &Rating::rating_), required("maxValue", &Rating::maxValue_),
                 optional("numberOfRatings", &Rating::numberOfRatings_)};
};

template <>
struct JsonFields<ComparableVariationAttribute> {
  static ComparableVariationAttribute blank() { return {{}, {}, {}}; }
  static constexpr auto fields = std::tuple{required("id", &ComparableVariationAttribute::id_),
                                            optional("name", &ComparableVariationAttribute::name_),
                                            required("option", &ComparableVariationAttribute::option_)};
};

template <>
struct JsonFields<AttributeDefinitionOption> {
  static AttributeDefinitionOption blank() { return {{}, {}}; }
  static constexpr auto fields =
      std::tuple{required("id", &AttributeDefinitionOption::id_), optional("name", &AttributeDefinitionOption::name_)};
};

template <>
struct JsonFields<AttributeDefinition> {
  static AttributeDefinition blank() { return {{}, {}, {}}; }
  static constexpr auto fields = std::tuple{
      required("id", &AttributeDefinition::id_), lenient("name", &AttributeDefinition::name_),
      lenient("significant", &AttributeDefinition::significant_), required("options", &AttributeDefinition::options_)};
};

/// The list of SKUs that variations share.
using SharedSkus = std::shared_ptr<const std::vector<std::string>>;

namespace product_coding_detail {

/// The context of what stands inside a product. It makes its lists of SKUs anew. Most of what a large product takes to
/// read would go into lists that nobody ever sees, so they are only checked.
struct InsideProduct {};

/// Reads a list of texts for the errors in it.
template <class Source>
void checkTexts(Source value) {
  if (!value.isArray()) throw json_detail::typeMismatch("Array", value.kind());
  std::size_t index = 0;
  for (const Source element : value.elements()) {
    json_detail::at(index++, [&] { static_cast<void>(json_detail::textOf(element)); });
  }
}

/// A list that several records share: written once and copied after that.
template <class Record>
struct SharedSkusField {
  std::string_view key;
  SharedSkus Record::* member;

  template <class Source, class... Context>
  void decode(Record& record, const std::optional<Source>& value, Context... /*context*/) const {
    (record.*member).reset();
    if (!value || value->isNull()) return;
    json_detail::at(key, [&] {
      if constexpr ((std::same_as<Context, InsideProduct> || ...)) {
        checkTexts(*value);
      } else {
        record.*member =
            std::make_shared<const std::vector<std::string>>(JsonCoding<std::vector<std::string>>::decode(*value));
      }
    });
  }
  void encode(const Record& record, JsonWriter& writer) const {
    const SharedSkus& skus = record.*member;
    if (!skus) return;
    writer.key(key);
    writer.shared(skus.get(), [&] { JsonCoding<std::vector<std::string>>::encode(*skus, writer); });
  }
};

}  // namespace product_coding_detail

template <>
struct JsonFields<VariationAttribute> {
  static VariationAttribute blank() { return {std::string(), std::string()}; }
  static constexpr auto fields =
      std::tuple{required("id", &VariationAttribute::id_), required("option", &VariationAttribute::option_),
                 product_coding_detail::SharedSkusField<VariationAttribute>{"productOptions",
                                                                            &VariationAttribute::productOptions_}};
};

template <>
struct JsonCoding<Detail> {
  template <class Source>
  static Detail decode(Source value) {
    struct Kind {
      std::string detailType;
    };
    Kind kind;
    json_detail::decodeFields(kind, std::tuple{required("detailType", &Kind::detailType)}, value);
    const auto content = json_detail::findMembers(std::tuple{Content{}}, value)[0];
    const auto read = [&]<class Type>(std::type_identity<Type>) {
      if (!content) throw json_detail::keyNotFound(Content::key);
      return json_detail::at(Content::key, [&] { return JsonCoding<Type>::decode(*content); });
    };
    if (kind.detailType == bulletsType) return Detail::bullets(read(std::type_identity<std::vector<std::string>>{}));
    if (kind.detailType == paragraphType) return Detail::paragraph(read(std::type_identity<std::string>{}));
    return Detail::unknown();
  }
  static void encode(const Detail& detail, JsonWriter& writer);

 private:
  struct Content {
    static constexpr std::string_view key = "detailContent";
  };
  static constexpr std::string_view bulletsType = "BULLETS";
  static constexpr std::string_view paragraphType = "PARAGRAPH";
};

/// The members of a variation that are read; written, there are more.
template <>
struct JsonFields<VariationFields> {
  static VariationFields blank() { return {.price = JsonFields<Price>::blank()}; }
  static constexpr auto fields = std::tuple{required("attributes", &VariationFields::attributes),
                                            lenient("comparableAttributes", &VariationFields::comparableAttributes),
                                            lenient("details", &VariationFields::details),
                                            required("imageUrls", &VariationFields::imageUrls),
                                            required("inStock", &VariationFields::inStock),
                                            required("name", &VariationFields::name),
                                            required("price", &VariationFields::price),
                                            lenient("rating", &VariationFields::rating),
                                            required("sku", &VariationFields::sku),
                                            lenient("subtitle", &VariationFields::subtitle),
                                            lenient("url", &VariationFields::url)};
};

template <>
struct JsonCoding<Variation> {
  template <class Source, class... Context>
  static Variation decode(Source value, Context... context) {
    return Variation(JsonCoding<VariationFields>::decode(value, context...));
  }
  static void encode(const Variation& variation, JsonWriter& writer);
};

namespace product_coding_detail {

/// A contradiction in what was read, as an error of reading.
[[nodiscard]] DecodingError asDecodingError(const ProductSpecError& error);

[[nodiscard]] DecodingError unsupportedVersion(std::int64_t version);

/// What stands around a product.
struct Envelope {
  std::int64_t schemaVersion = 0;
  std::string currency;
  std::string locale;
};

}  // namespace product_coding_detail

template <>
struct JsonCoding<AttributeDefinition> {
  template <class Source>
  static AttributeDefinition decode(Source value) {
    auto read = JsonFields<AttributeDefinition>::blank();
    json_detail::decodeFields(read, JsonFields<AttributeDefinition>::fields, value);
    try {
      AttributeDefinition definition(std::move(read.id_), std::move(read.name_), std::move(read.options_));
      definition.significant_ = read.significant_;
      return definition;
    } catch (const ProductSpecError& error) {
      throw product_coding_detail::asDecodingError(error);
    }
  }
  static void encode(const AttributeDefinition& definition, JsonWriter& writer) {
    json_detail::encodeFields(definition, JsonFields<AttributeDefinition>::fields, writer);
  }
};

/// The members of a product's inner object.
template <>
struct JsonFields<ProductFields> {
  static constexpr auto fields = std::tuple{required("attributes", &ProductFields::attributes),
                                            lenient("brandName", &ProductFields::brandName),
                                            required("description", &ProductFields::description),
                                            required("defaultVariationIndex", &ProductFields::defaultVariationIndex),
                                            lenient("name", &ProductFields::name),
                                            lenient("sku", &ProductFields::sku),
                                            lenient("url", &ProductFields::url),
                                            required("variations", &ProductFields::variations)};
};

template <>
struct JsonCoding<Product> {
  static constexpr std::int64_t schemaVersion = 4;

  template <class Source>
  static Product decode(Source value) {
    using product_coding_detail::Envelope;
    // The version comes first: what an unknown version says otherwise means nothing.
    Envelope envelope;
    json_detail::decodeFields(envelope, std::tuple{required("_schemaVersion", &Envelope::schemaVersion)}, value);
    if (envelope.schemaVersion != schemaVersion)
      throw product_coding_detail::unsupportedVersion(envelope.schemaVersion);
    json_detail::decodeFields(
        envelope, std::tuple{required("currency", &Envelope::currency), required("locale", &Envelope::locale)}, value);
    struct Inner {
      ProductFields fields;
    };
    Inner inner;
    json_detail::decodeFields(inner, std::tuple{required("product", &Inner::fields)}, value,
                              product_coding_detail::InsideProduct{});
    inner.fields.currency = std::move(envelope.currency);
    inner.fields.locale = std::move(envelope.locale);
    try {
      return Product(std::move(inner.fields));
    } catch (const ProductSpecError& error) {
      // Too few variations or attributes is an error of the product itself, wherever it comes from.
      if (error.kind() == ProductSpecError::Kind::typeError) throw;
      throw product_coding_detail::asDecodingError(error);
    }
  }
  static void encode(const Product& product, JsonWriter& writer);
};

}  // namespace corvane
