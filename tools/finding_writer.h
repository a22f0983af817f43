/// How findings are shown.
#pragma once

#include <string>

#include "tools/finding.h"

namespace corvane::tools {

enum class Colours { none, terminal };

/// Whether people look at standard error, on a terminal that has colours, and do not mind them.
[[nodiscard]] Colours wantedColours();

/// One line as compilers write it, so that editors can jump to the place.
[[nodiscard]] std::string textLine(const std::string& file, const Finding& finding, Colours colours);

/// One JSON object.
[[nodiscard]] std::string jsonLine(const std::string& file, const Finding& finding);

}  // namespace corvane::tools
