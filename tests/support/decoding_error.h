/// The error that a text which must not be read is refused with.
#pragma once

#include <gtest/gtest.h>

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

}  // namespace corvane
