/// The errors that texts which must not be read are refused with.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coding.h"

namespace corvane {

template <class Record>
DecodingError decodingError(std::string_view text) {
  try {
    static_cast<void>(decodeJson<Record>(text));
  } catch (const DecodingError& error) {
    return error;
  }
  ADD_FAILURE() << text << " was accepted";
  return {DecodingError::Kind::dataCorrupted, {}, {}, {}};
}

/// The same in one line: the error's kind, what was wanted, and where.
template <class Record>
std::string whyUnreadable(std::string_view text) {
  constexpr std::array kinds{"typeMismatch", "valueNotFound", "keyNotFound", "dataCorrupted"};
  const DecodingError error = decodingError<Record>(text);
  return std::string(kinds.at(static_cast<std::size_t>(error.kind()))) + " " + std::string(error.typeName()) + " at " +
         toText(error.codingPath());
}

}  // namespace corvane
