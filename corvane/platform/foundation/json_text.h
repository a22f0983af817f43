/// What stands behind `encodeJson` and `decodeJson`; included where they are instantiated.
#pragma once

#include <string>
#include <string_view>

#include "corvane/platform/foundation/json_coder.h"
#include "corvane/platform/foundation/json_coding.h"

namespace corvane {

template <class Record>
std::string encodeJson(const Record& record) {
  JsonWriter writer;
  JsonCoding<Record>::encode(record, writer);
  return writer.take();
}

template <class Record>
Record decodeJson(std::string_view text) {
  const auto value = JsonValue::parse(text);
  if (!value) throw value.error();
  if (!value->isWellFormed()) {
    throw DecodingError(DecodingError::Kind::dataCorrupted, "String", {}, "Some text has no UTF-8 form.");
  }
  return JsonCoding<Record>::decode(*value);
}

}  // namespace corvane
