/// What the check of a catalogue has to say.
#pragma once

#include <cstddef>
#include <string>

#include "tools/text_position.h"

namespace corvane::tools {

enum class Severity { error, warning };

enum class FindingKind {
  syntax,      ///< the text is no JSON
  refused,     ///< a product that the library does not take
  dropped,     ///< a value that the library leaves out of a product
  unreadable,  ///< a file that could not be read, or not to its end
};

struct Finding {
  Severity severity = Severity::error;
  FindingKind kind = FindingKind::refused;
  std::string message{};
  std::string path{};            ///< from the product to the value, or empty
  TextPosition position{};       ///< means nothing for what is unreadable
  std::size_t product = 0;       ///< in its file, from 1; 0 for what belongs to none
  std::size_t skippedBytes = 0;  ///< how much of the file behind it is not read
};

}  // namespace corvane::tools
