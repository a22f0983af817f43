/// What stands behind `encodeJson` and `decodeJson`; included where they are instantiated.
#pragma once

#include <simdjson.h>

#include <string>
#include <string_view>

#include "corvane/platform/foundation/json_coder.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/platform/foundation/json_dom_view.h"

namespace corvane {

template <class Record>
std::string encodeJson(const Record& record) {
  JsonWriter writer;
  JsonCoding<Record>::encode(record, writer);
  return writer.take();
}

template <class Record>
Record decodeJson(std::string_view text) {
  simdjson::dom::parser parser;
  simdjson::dom::element root;
  if (parser.parse(text.data(), text.size()).get(root) == simdjson::SUCCESS) {
    return JsonCoding<Record>::decode(JsonDomView(root));
  }
  // What the parser refuses may still be read by way of a document, which also has the words for what cannot.
  const auto value = JsonValue::parse(text);
  if (!value) throw value.error();
  return JsonCoding<Record>::decode(JsonView(*value));
}

}  // namespace corvane
