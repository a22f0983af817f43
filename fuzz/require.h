/// How a fuzz target says that something is wrong.
#pragma once

#include <cstdlib>

inline void require(bool condition) {
  if (!condition) std::abort();
}
