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

CodingPath pathBelow(CodingKey key, const CodingPath& rest) {
  CodingPath path{std::move(key)};
  path.insert(path.end(), rest.begin(), rest.end());
  return path;
}

}  // namespace

namespace json_detail {

DecodingError typeMismatch(std::string_view typeName, JsonKind found) {
  const auto kind = found == JsonKind::null ? DecodingError::Kind::valueNotFound : DecodingError::Kind::typeMismatch;
  std::string description = "Expected ";
  description.append(typeName).append(" but found ").append(nameOf(found)).append(".");
  return {kind, std::string(typeName), {}, std::move(description)};
}

DecodingError keyNotFound(std::string_view key) {
  return {DecodingError::Kind::keyNotFound, std::string(key), {}, "No member \"" + std::string(key) + "\"."};
}

DecodingError unknownRawValue(std::string_view text) {
  return {DecodingError::Kind::dataCorrupted, "String", {}, "No value is written as \"" + std::string(text) + "\"."};
}

DecodingError doesNotFit(std::string_view typeName) {
  return {DecodingError::Kind::dataCorrupted,
          std::string(typeName),
          {},
          "The number does not fit in " + std::string(typeName) + "."};
}

DecodingError below(CodingKey key, const DecodingError& error) {
  return {error.kind(), error.typeName(), pathBelow(std::move(key), error.codingPath()), error.debugDescription()};
}

EncodingError below(CodingKey key, const EncodingError& error) {
  return {error.kind(), pathBelow(std::move(key), error.codingPath()), error.debugDescription()};
}

}  // namespace json_detail

}  // namespace corvane
