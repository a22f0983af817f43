#include "corvane/platform/foundation/json_coder.h"

namespace corvane {

namespace {

std::string_view nameOf(JsonKind kind) {
  switch (kind) {
    case JsonKind::null:
      return "null";
    case JsonKind::boolean:
      return "a Boolean";
    case JsonKind::number:
      return "a number";
    case JsonKind::string:
      return "a string";
    case JsonKind::array:
      return "an array";
    case JsonKind::object:
      return "an object";
  }
  std::unreachable();
}

}  // namespace

namespace json_detail {

DecodingError typeMismatch(std::string_view typeName, JsonView found) {
  const auto kind = found.isNull() ? DecodingError::Kind::valueNotFound : DecodingError::Kind::typeMismatch;
  std::string description = "Expected ";
  description.append(typeName).append(" but found ").append(nameOf(found.kind())).append(".");
  return {kind, std::string(typeName), {}, std::move(description)};
}

DecodingError keyNotFound(std::string_view key) {
  return {DecodingError::Kind::keyNotFound, std::string(key), {}, "No member \"" + std::string(key) + "\"."};
}

DecodingError unknownRawValue(std::string_view text) {
  return {DecodingError::Kind::dataCorrupted, "String", {}, "No value is written as \"" + std::string(text) + "\"."};
}

}  // namespace json_detail

std::int64_t JsonCoding<std::int64_t>::decode(JsonView value) {
  if (const auto number = value.integer()) return *number;
  if (value.kind() != JsonKind::number) throw json_detail::typeMismatch("Int", value);
  throw DecodingError(DecodingError::Kind::dataCorrupted, "Int", {}, "The number is not a whole one within 64 bits.");
}

}  // namespace corvane
