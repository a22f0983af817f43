/// Enumerations whose values cross to the page as texts: one table of (enumerator, text) each.
#pragma once

#include <array>
#include <cassert>
#include <cstddef>
#include <optional>
#include <string_view>

#include "corvane/export.h"

namespace corvane {

template <class Enumeration>
struct RawText {
  Enumeration value;
  std::string_view text;
};

/// Specialised for each vocabulary with `static constexpr std::array<RawText<Enumeration>, N> rows`.
template <class Enumeration>
struct RawTextTable;

template <class Enumeration>
concept HasRawText = requires { RawTextTable<Enumeration>::rows; };

namespace raw_text_detail {

/// Whether a value has a name in its enumeration: the compiler spells any other value as a cast.
template <auto value>
consteval bool isEnumerator() {
  return std::string_view(__PRETTY_FUNCTION__).find("value = (") == std::string_view::npos;
}

/// Rows stand in the order of the enumerators, from 0 on, and no text occurs twice.
template <HasRawText Enumeration>
consteval bool isConsistent() {
  const auto& rows = RawTextTable<Enumeration>::rows;
  for (std::size_t index = 0; index < rows.size(); ++index) {
    if (static_cast<std::size_t>(rows[index].value) != index) return false;
    for (std::size_t other = 0; other < index; ++other) {
      if (rows[other].text == rows[index].text) return false;
    }
  }
  return true;
}

}  // namespace raw_text_detail

/// The text that stands for a value.
template <HasRawText Enumeration>
constexpr std::string_view rawValue(Enumeration value) noexcept {
  constexpr auto& rows = RawTextTable<Enumeration>::rows;
  static_assert(raw_text_detail::isConsistent<Enumeration>(), "the rows are not in the order of the enumerators");
  static_assert(!raw_text_detail::isEnumerator<static_cast<Enumeration>(rows.size())>(), "an enumerator has no row");
  const auto index = static_cast<std::size_t>(value);
  assert(index < rows.size());
  return rows[index].text;
}

/// The value that a text stands for; none for any other text. Upper and lower case differ.
template <HasRawText Enumeration>
constexpr std::optional<Enumeration> fromRawValue(std::string_view text) noexcept {
  for (const auto& row : RawTextTable<Enumeration>::rows) {
    if (row.text == text) return row.value;
  }
  return std::nullopt;
}

/// Every value, in the order of declaration.
template <HasRawText Enumeration>
constexpr auto allCases() noexcept {
  constexpr auto& rows = RawTextTable<Enumeration>::rows;
  std::array<Enumeration, rows.size()> values{};
  for (std::size_t index = 0; index < values.size(); ++index) values[index] = rows[index].value;
  return values;
}

}  // namespace corvane
