/// Random identifiers.
#pragma once

#include <string>

namespace corvane {

/// A fresh random UUID (version 4) as 36 characters, hyphenated and in upper case. No process ever makes one that
/// another has made, forked ones included.
[[nodiscard]] std::string makeUuid();

}  // namespace corvane
