/// What exactly is wrong with a JSON text, and where in it a value stands.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "corvane/platform/foundation/coding_error.h"
#include "tools/text_position.h"

namespace corvane::tools {

struct SyntaxError {
  std::size_t offset;                         ///< of the first byte that cannot stand where it does
  std::string expected;                       ///< what could
  std::optional<std::size_t> container = {};  ///< where the innermost open object or array begins
};

/// The first error in the text of a single value. Slow, for texts that the parser has refused already.
[[nodiscard]] std::optional<SyntaxError> findSyntaxError(std::string_view text);

/// "expected ..., found ..." for an offset of a text at whose end the file ends.
[[nodiscard]] std::string describeMismatch(std::string_view expected, std::string_view text, std::size_t offset);
/// The same for an error, with where the innermost open object or array begins.
[[nodiscard]] std::string describe(const SyntaxError& error, std::string_view text, const TextPosition& begin);

/// Where the value at a path begins, or the last value on the way to it that is there. The text must have no error.
[[nodiscard]] std::size_t findOffset(std::string_view text, const CodingPath& path);

}  // namespace corvane::tools
