/// Where a product contradicts itself.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "corvane/platform/foundation/coding_error.h"
#include "tools/dropped_values.h"

namespace corvane::tools {

/// The path to what a refusal of the library is about that has none, as it only names what it is about. Empty if it is
/// the product as a whole.
template <class Source>
[[nodiscard]] CodingPath contradictionPath(Source root, std::string_view message) {
  if (message.starts_with("product spec version")) return {"_schemaVersion"};
  const auto inner = memberOf(root, "product");
  if (!inner) return {};
  const auto textOf = [](Source object, std::string_view key) {
    const auto member = memberOf(object, key);
    return std::string(member ? member->string().value_or("") : "");
  };
  // Everything that is asked for has been read once, so that the lists are lists.
  const auto inEach = [](Source object, const char* key, auto step) {
    const auto list = memberOf(object, key);
    std::size_t index = 0;
    if (list && list->isArray()) {
      for (const Source element : list->elements()) step(index++, element);
    }
  };
  CodingPath found;
  inEach(*inner, "attributes", [&](std::size_t index, Source attribute) {
    if (message == "Attribute " + textOf(attribute, "id") + " defined multiple times") {
      found = {"product", "attributes", index, "id"};
    }
  });
  inEach(*inner, "variations", [&](std::size_t index, Source variation) {
    const std::string uses = "Variation " + textOf(variation, "sku") + " uses undefined ";
    if (!found.empty() || !message.starts_with(uses)) return;
    inEach(variation, "attributes", [&](std::size_t attributeIndex, Source attribute) {
      const std::string id = textOf(attribute, "id");
      const std::string_view used = message.substr(uses.size());
      const bool isAttribute = used == "attribute " + id;
      if (!found.empty() || (!isAttribute && used != "option " + textOf(attribute, "option") + " for " + id)) return;
      found = {"product", "variations", index, "attributes", attributeIndex, isAttribute ? "id" : "option"};
    });
  });
  return found;
}

}  // namespace corvane::tools
