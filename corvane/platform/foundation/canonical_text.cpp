#include "corvane/platform/foundation/canonical_text.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace corvane {

std::string_view CanonicalKeys::of(std::string_view text) {
  if (std::ranges::all_of(text, [](char character) { return static_cast<unsigned char>(character) < 0x80; })) {
    return text;
  }
  utf8proc_uint8_t* decomposed = nullptr;
  const utf8proc_ssize_t size =
      utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                   &decomposed, static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_DECOMPOSE));
  const std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(decomposed, &std::free);
  if (size < 0) return text;
  return decomposed_.emplace_back(reinterpret_cast<const char*>(decomposed), static_cast<std::size_t>(size));
}

}  // namespace corvane
