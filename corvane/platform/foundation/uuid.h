/// Random identifiers.
#pragma once

#include <string>

namespace corvane {

/// A fresh random UUID (version 4) as 36 characters, hyphenated and in upper case. It cannot be
/// foreseen, and a forked process makes others than the one that it came from.
[[nodiscard]] std::string makeUuid();

}  // namespace corvane
