// Products to JSON and back, beside the same work with nlohmann-json; and the checks.
#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <nlohmann/json.hpp>
#include <string>

#include "benchmarks/allocation_counter.h"
#include "benchmarks/product_samples.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/product/product.h"

namespace corvane::benchmarks {
namespace {

void setBytes(benchmark::State& state, std::size_t size) {
  state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
  state.counters["size"] = static_cast<double>(size);
}

Product makeProduct(const benchmark::State& state) {
  return Product(makeProductFields(static_cast<std::size_t>(state.range(0))));
}

void encodeProduct(benchmark::State& state) {
  const Product product = makeProduct(state);
  std::size_t size = 0;
  {
    const AllocationReport report(state);
    for (auto _ : state) size = encodeJson(product).size();
  }
  setBytes(state, size);
}
BENCHMARK(encodeProduct)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);

/// What no encoder does without: the text has to get into memory that is new.
void copyText(benchmark::State& state) {
  const std::string text = encodeJson(makeProduct(state));
  for (auto _ : state) {
    std::string copy = text;
    benchmark::DoNotOptimize(copy.data());
  }
  setBytes(state, text.size());
}
BENCHMARK(copyText)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);

/// What no decoder does without: the JSON library's own parse.
void parseText(benchmark::State& state) {
  const std::string text = encodeJson(makeProduct(state));
  for (auto _ : state) {
    simdjson::dom::parser parser;
    benchmark::DoNotOptimize(parser.parse(text.data(), text.size()).error());
  }
  setBytes(state, text.size());
}
BENCHMARK(parseText)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);

void decodeProduct(benchmark::State& state) {
  const std::string text = encodeJson(makeProduct(state));
  for (auto _ : state) benchmark::DoNotOptimize(decodeJson<Product>(text));
  setBytes(state, text.size());
}
BENCHMARK(decodeProduct)->Arg(1)->Arg(10)->Arg(100)->Arg(1000)->Arg(5000)->Unit(benchmark::kMicrosecond);

using Json = nlohmann::json;

template <class Value>
void setIfAny(Json& object, const char* key, const std::optional<Value>& value) {
  if (value) object[key] = *value;
}

Json toJson(const Variation& variation) {
  Json json{{"imageUrls", variation.imageUrls()},
            {"inStock", variation.inStock()},
            {"name", variation.name()},
            {"sku", variation.sku()},
            {"relatedProducts", Json::array()}};
  Json& attributes = json["attributes"] = Json::array();
  for (const VariationAttribute& attribute : variation.attributes()) {
    attributes.push_back(
        {{"id", attribute.id()}, {"option", attribute.option()}, {"productOptions", *attribute.productOptions()}});
  }
  Json specs = Json::array();
  Json& comparables = json["comparableAttributes"] = Json::array();
  for (const auto& comparable : *variation.comparableAttributes()) {
    comparables.push_back({{"id", comparable.id()}, {"name", *comparable.name()}, {"option", comparable.option()}});
    specs.push_back({{"name", *comparable.name()}, {"value", comparable.option()}});
  }
  Json points = Json::array();
  Json& details = json["details"] = Json::array();
  for (const Detail& detail : *variation.details()) {
    detail.match(
        [&](const Detail::Bullets& bullets) {
          details.push_back({{"detailType", "BULLETS"}, {"detailContent", bullets.points}});
          for (const auto& point : bullets.points) points.push_back(point);
        },
        [&](const Detail::Paragraph& paragraph) {
          details.push_back({{"detailType", "PARAGRAPH"}, {"detailContent", paragraph.text}});
        },
        [](const Detail::Unknown&) {});
  }
  json["price"] = {{"currency", variation.price().currency()},
                   {"current", variation.price().current()},
                   {"original", *variation.price().original()}};
  const Json rating{{"rating", variation.rating()->rating()},
                    {"maxValue", variation.rating()->maxValue()},
                    {"numberOfRatings", *variation.rating()->numberOfRatings()}};
  json["rating"] = rating;
  setIfAny(json, "subtitle", variation.subtitle());
  setIfAny(json, "url", variation.url());
  json["meta"]["data"] = {
      {"subtitle", *variation.subtitle()}, {"uniqueSellingPoints", points}, {"rating", rating}, {"specs", specs}};
  return json;
}

std::string encodeWithPeer(const Product& product) {
  Json inner{{"description", product.description()}, {"defaultVariationIndex", product.defaultVariationIndex()}};
  Json& attributes = inner["attributes"] = Json::array();
  for (const AttributeDefinition& definition : product.attributes()) {
    Json options = Json::array();
    for (const auto& option : definition.options()) options.push_back({{"id", option.id()}, {"name", *option.name()}});
    attributes.push_back({{"id", definition.id()},
                          {"name", *definition.name()},
                          {"significant", *definition.significant()},
                          {"options", std::move(options)}});
  }
  setIfAny(inner, "brandName", product.brandName());
  setIfAny(inner, "name", product.name());
  setIfAny(inner, "sku", product.sku());
  setIfAny(inner, "url", product.url());
  Json& variations = inner["variations"] = Json::array();
  for (const Variation& variation : product.variations()) variations.push_back(toJson(variation));
  return Json{{"currency", product.currency()},
              {"locale", product.locale()},
              {"vendor", "hydratable-product"},
              {"_schemaVersion", 4},
              {"product", std::move(inner)}}
      .dump();
}

void peerEncodeProduct(benchmark::State& state) {
  const Product product = makeProduct(state);
  std::size_t size = 0;
  for (auto _ : state) size = encodeWithPeer(product).size();
  setBytes(state, size);
}
BENCHMARK(peerEncodeProduct)->Arg(100)->Arg(5000)->Unit(benchmark::kMicrosecond);

std::vector<VariationAttribute> attributesFromPeer(const Json& json) {
  std::vector<VariationAttribute> attributes;
  for (const Json& attribute : json) {
    attributes.emplace_back(attribute.at("id").get<std::string>(), attribute.at("option").get<std::string>());
    benchmark::DoNotOptimize(attribute.at("productOptions").get<std::vector<std::string>>());
  }
  return attributes;
}

Variation variationFromPeer(const Json& json) {
  std::vector<ComparableVariationAttribute> comparables;
  for (const Json& comparable : json.at("comparableAttributes")) {
    comparables.emplace_back(comparable.at("id").get<std::string>(), comparable.at("name").get<std::string>(),
                             comparable.at("option").get<std::string>());
  }
  std::vector<Detail> details;
  for (const Json& detail : json.at("details")) {
    const Json& content = detail.at("detailContent");
    details.push_back(detail.at("detailType") == "BULLETS" ? Detail::bullets(content.get<std::vector<std::string>>())
                                                           : Detail::paragraph(content.get<std::string>()));
  }
  const Json& price = json.at("price");
  const Json& rating = json.at("rating");
  return Variation({.attributes = attributesFromPeer(json.at("attributes")),
                    .comparableAttributes = std::move(comparables),
                    .details = std::move(details),
                    .imageUrls = json.at("imageUrls").get<std::vector<std::string>>(),
                    .inStock = json.at("inStock").get<bool>(),
                    .name = json.at("name").get<std::string>(),
                    .price = Price(price.at("currency").get<std::string>(), price.at("current").get<float>(),
                                   price.at("original").get<float>()),
                    .rating = Rating(rating.at("rating").get<float>(), rating.at("maxValue").get<std::int64_t>(),
                                     rating.at("numberOfRatings").get<std::int64_t>()),
                    .sku = json.at("sku").get<std::string>(),
                    .subtitle = json.at("subtitle").get<std::string>(),
                    .url = json.at("url").get<std::string>()});
}

Product decodeWithPeer(const std::string& text) {
  const Json json = Json::parse(text);
  const Json& inner = json.at("product");
  ProductFields fields{.brandName = inner.at("brandName").get<std::string>(),
                       .currency = json.at("currency").get<std::string>(),
                       .description = inner.at("description").get<std::string>(),
                       .defaultVariationIndex = inner.at("defaultVariationIndex").get<std::int64_t>(),
                       .locale = json.at("locale").get<std::string>(),
                       .name = inner.at("name").get<std::string>(),
                       .sku = inner.at("sku").get<std::string>(),
                       .url = inner.at("url").get<std::string>()};
  for (const Json& definition : inner.at("attributes")) {
    std::vector<AttributeDefinitionOption> options;
    for (const Json& option : definition.at("options")) {
      options.emplace_back(option.at("id").get<std::string>(), option.at("name").get<std::string>());
    }
    fields.attributes.emplace_back(definition.at("id").get<std::string>(), definition.at("name").get<std::string>(),
                                   std::move(options));
  }
  for (const Json& variation : inner.at("variations")) fields.variations.push_back(variationFromPeer(variation));
  return Product(std::move(fields));
}

void peerDecodeProduct(benchmark::State& state) {
  const std::string text = encodeJson(makeProduct(state));
  for (auto _ : state) benchmark::DoNotOptimize(decodeWithPeer(text));
  setBytes(state, text.size());
}
BENCHMARK(peerDecodeProduct)->Arg(100)->Arg(5000)->Unit(benchmark::kMicrosecond);

/// Three attributes; the third has one option for every thousandth variation.
void checkAndLink(benchmark::State& state) {
  auto fields = makeProductFields(static_cast<std::size_t>(state.range(0)));
  fields.attributes.emplace_back(
      "cut", std::nullopt, std::vector<AttributeDefinitionOption>{{"slim", std::nullopt}, {"wide", std::nullopt}});
  std::size_t index = 0;
  for (Variation& variation : fields.variations) {
    VariationFields copy{.attributes = variation.attributes(),
                         .imageUrls = {},
                         .name = variation.name(),
                         .price = variation.price(),
                         .sku = variation.sku()};
    copy.attributes.emplace_back("cut", ++index % 2 == 0 ? "slim" : "wide");
    variation = Variation(std::move(copy));
  }
  for (auto _ : state) {
    state.PauseTiming();
    ProductFields fresh = fields;
    state.ResumeTiming();
    Product product(std::move(fresh));
    benchmark::DoNotOptimize(product);
    state.PauseTiming();
    {
      const Product dropped = std::move(product);
    }
    state.ResumeTiming();
  }
  state.SetComplexityN(state.range(0));
}
BENCHMARK(checkAndLink)->RangeMultiplier(10)->Range(1000, 100000)->Unit(benchmark::kMillisecond)->Complexity();

}  // namespace
}  // namespace corvane::benchmarks
