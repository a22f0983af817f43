/// Whether text is what all text in the framework must be.
#pragma once

#include <string_view>

#include "corvane/export.h"

namespace corvane {

[[nodiscard]] CORVANE_EXPORT bool isValidUtf8(std::string_view text) noexcept;

}  // namespace corvane
