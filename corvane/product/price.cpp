#include "corvane/product/price.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "corvane/platform/foundation/coding_error.h"

namespace corvane {

namespace {

DecodingError refusal(std::string_view member, std::string description) {
  return {DecodingError::Kind::dataCorrupted, "Float", {std::string(member)}, std::move(description)};
}

bool isDecimal(std::string_view text) {
  const auto isDigits = [](std::string_view part) {
    return !part.empty() && std::ranges::all_of(part, [](char digit) { return digit >= '0' && digit <= '9'; });
  };
  if (text.starts_with('-')) text.remove_prefix(1);
  const auto point = text.find('.');
  return isDigits(text.substr(0, point)) && (point == std::string_view::npos || isDigits(text.substr(point + 1)));
}

/// The one spelling of an amount: no zeros that say nothing, and no minus before a zero.
std::string normalised(std::string_view decimal) {
  const bool isNegative = decimal.starts_with('-');
  if (isNegative) decimal.remove_prefix(1);
  if (decimal.contains('.')) {
    decimal = decimal.substr(0, decimal.find_last_not_of('0') + 1);
    if (decimal.ends_with('.')) decimal.remove_suffix(1);
  }
  decimal.remove_prefix(std::min(decimal.find_first_not_of('0'), decimal.size()));
  std::string text(decimal);
  if (text.empty() || text.starts_with('.')) text.insert(0, 1, '0');
  return isNegative && text != "0" ? "-" + text : text;
}

/// The shortest decimal that reads back as the same float, without an exponent.
std::string shortest(float value) {
  std::string text(64, '\0');  // the longest one has 48 characters
  auto* const end = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
  text.resize(static_cast<std::size_t>(end - text.data()));
  return text;
}

float amount(std::string_view member, std::string_view text) {
  if (!isDecimal(text)) throw refusal(member, "Expected a decimal such as 59.95");
  float value = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  const std::string wanted = normalised(text);
  if (result.ec != std::errc() || normalised(shortest(value)) != wanted) {
    throw refusal(member, wanted + " has more digits than a price can keep");
  }
  return value;
}

std::string decimal(std::int64_t minorUnits, int fractionDigits) {
  std::string text = std::to_string(minorUnits);
  const std::size_t sign = minorUnits < 0 ? 1 : 0;
  const auto digits = static_cast<std::size_t>(fractionDigits);
  if (text.size() - sign <= digits) text.insert(sign, digits + 1 - (text.size() - sign), '0');
  if (digits > 0) text.insert(text.size() - digits, 1, '.');
  return text;
}

}  // namespace

Price Price::fromDecimal(std::string currency, std::string_view current, std::optional<std::string_view> original) {
  Price price(std::move(currency), amount("current", current), std::nullopt);
  if (original) price.setOriginal(amount("original", *original));
  return price;
}

Price Price::fromMinorUnits(std::string currency, int fractionDigits, std::int64_t current,
                            std::optional<std::int64_t> original) {
  if (fractionDigits < 0 || fractionDigits > std::numeric_limits<std::int32_t>::digits10) {
    throw refusal("current", "Expected 0 to 9 digits behind the point");
  }
  const std::string now = decimal(current, fractionDigits);
  if (!original) return fromDecimal(std::move(currency), now);
  return fromDecimal(std::move(currency), now, decimal(*original, fractionDigits));
}

}  // namespace corvane
