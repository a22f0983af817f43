#include "corvane/platform/foundation/utf8.h"

#include <simdjson.h>

namespace corvane {

bool isValidUtf8(std::string_view text) noexcept { return simdjson::validate_utf8(text); }

}  // namespace corvane
