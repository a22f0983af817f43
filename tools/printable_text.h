/// Foreign text on a terminal.
#pragma once

#include <string>
#include <string_view>

#include "corvane/platform/foundation/utf8.h"

namespace corvane::tools {

/// The text with its control characters spelt out, and if it is not UTF-8, all that is not ASCII: what a catalogue
/// contains must neither break a message into lines nor steer the terminal.
[[nodiscard]] inline std::string printable(std::string_view text) {
  constexpr std::string_view digits = "0123456789abcdef";
  const bool isUtf8 = isValidUtf8(text);
  std::string shown;
  shown.reserve(text.size());
  for (const char character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte >= 0x20 && byte != 0x7f && (byte < 0x80 || isUtf8)) {
      shown += character;
    } else {
      shown += {'\\', 'x', digits[byte >> 4U], digits[byte & 0xfU]};
    }
  }
  return shown;
}

}  // namespace corvane::tools
