#include "corvane/platform/foundation/json_coder.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

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

DecodingError hasNoUtf8Form() {
  return {DecodingError::Kind::dataCorrupted, "String", {}, "The text has half a surrogate pair and no UTF-8 form."};
}

float nearestFloat(double number) {
  const auto nearest = static_cast<float>(number);
  if (!std::isfinite(nearest) || static_cast<double>(nearest) == number) return nearest;
  const float other =
      std::nextafter(nearest, number > static_cast<double>(nearest) ? std::numeric_limits<float>::infinity()
                                                                    : -std::numeric_limits<float>::infinity());
  // Rounding twice goes wrong where the first rounding ends just between two floats. A decimal that we wrote is the
  // shortest one of its float. So the float whose decimal reads like this is the one that was meant.
  if ((static_cast<double>(nearest) + static_cast<double>(other)) / 2 != number) return nearest;
  const auto readsAs = [number](float candidate) {
    std::array<char, 32> text{};
    const char* const end = std::to_chars(text.data(), text.data() + text.size(), candidate).ptr;
    double value = 0;
    std::from_chars(text.data(), end, value);
    return value == number;
  };
  return !readsAs(nearest) && readsAs(other) ? other : nearest;
}

DecodingError below(CodingKey key, const DecodingError& error) {
  return {error.kind(), error.typeName(), pathBelow(std::move(key), error.codingPath()), error.debugDescription()};
}

}  // namespace json_detail

}  // namespace corvane
