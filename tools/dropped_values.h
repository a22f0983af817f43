/// What the lenient reading of a product leaves out, and where a product contradicts itself.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coder.h"
#include "corvane/product/product.h"
#include "corvane/product/product_coding.h"

namespace corvane::tools {

struct DroppedValue {
  CodingPath path;
  std::string reason;
};

/// The member of an object that counts.
template <class Source>
[[nodiscard]] std::optional<Source> memberOf(Source object, std::string_view key) {
  std::optional<Source> found;
  if (!object.isObject()) return found;
  for (const auto member : object.members()) {
    if (member.key == key) found = member.value;
  }
  return found;
}

/// Compares a product with the JSON that it was decoded from. Only what is absent is looked for, so that this takes
/// little of the time that decoding does.
template <class Source>
class DroppedValues {
 public:
  [[nodiscard]] static std::vector<DroppedValue> find(Source root, const Product& product) {
    DroppedValues values;
    const auto inner = memberOf(root, "product");
    if (!inner) return {};
    values.path_ = {"product"};
    values.noteUnlessThere(*inner,
                           std::array{Wanted{"brandName", product.brandName().has_value(), decodes<std::string>},
                                      Wanted{"name", product.name().has_value(), decodes<std::string>},
                                      Wanted{"sku", product.sku().has_value(), decodes<std::string>},
                                      Wanted{"url", product.url().has_value(), decodes<std::string>}});
    values.inEach(*inner, "attributes", [&](std::size_t, Source attribute) {
      // Both have a value in any product, so nothing is known before it is read again.
      values.noteUnlessThere(attribute, std::array{Wanted{"name", false, decodes<std::string>},
                                                   Wanted{"significant", false, decodes<bool>}});
    });
    values.inEach(*inner, "variations", [&](std::size_t index, Source variation) {
      values.addVariation(product.variations()[index], variation);
    });
    return std::move(values.dropped_);
  }

 private:
  struct Wanted {
    std::string_view key;
    bool isThere;
    void (*decodes)(Source);
  };

  template <class Value>
  static void decodes(Source value) {
    static_cast<void>(JsonCoding<Value>::decode(value));
  }

  void addVariation(const Variation& decoded, Source variation) {
    noteUnlessThere(variation,
                    std::array{Wanted{"comparableAttributes", decoded.comparableAttributes().has_value(),
                                      decodes<std::vector<ComparableVariationAttribute>>},
                               Wanted{"details", decoded.details().has_value(), decodes<std::vector<Detail>>},
                               Wanted{"rating", decoded.rating().has_value(), decodes<Rating>},
                               Wanted{"subtitle", decoded.subtitle().has_value(), decodes<std::string>},
                               Wanted{"url", decoded.url().has_value(), decodes<std::string>}});
    if (!decoded.details()) return;
    for (std::size_t index = 0; index < decoded.details()->size(); ++index) {
      if (!std::holds_alternative<Detail::Unknown>((*decoded.details())[index].value())) continue;
      CodingPath path = path_;
      path.insert(path.end(), {"details", index, "detailType"});
      dropped_.push_back({std::move(path), "No detail is of this type."});
    }
  }

  template <std::size_t count>
  void noteUnlessThere(Source object, const std::array<Wanted, count>& wanted) {
    if (std::ranges::all_of(wanted, &Wanted::isThere)) return;
    std::array<std::optional<Source>, count> found{};
    for (const auto member : object.members()) {
      for (std::size_t index = 0; index < count; ++index) {
        if (!wanted[index].isThere && wanted[index].key == member.key) found[index] = member.value;
      }
    }
    for (std::size_t index = 0; index < count; ++index) {
      if (found[index] && !found[index]->isNull()) note(wanted[index], *found[index]);
    }
  }

  void note(const Wanted& wanted, Source value) {
    try {
      wanted.decodes(value);
    } catch (const DecodingError& error) {
      CodingPath path = path_;
      path.emplace_back(std::string(wanted.key));
      path.insert(path.end(), error.codingPath().begin(), error.codingPath().end());
      dropped_.push_back({std::move(path), error.debugDescription()});
    }
  }

  template <class Step>
  void inEach(Source object, const char* key, Step step) {
    const auto list = memberOf(object, key);
    if (!list || !list->isArray()) return;
    std::size_t index = 0;
    path_.emplace_back(key);
    for (const Source element : list->elements()) {
      path_.emplace_back(index);
      step(index++, element);
      path_.pop_back();
    }
    path_.pop_back();
  }

  CodingPath path_;
  std::vector<DroppedValue> dropped_;
};

}  // namespace corvane::tools
