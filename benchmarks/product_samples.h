/// Products of any size for measurements.
#pragma once

#include <cstddef>

#include "corvane/product/product.h"

namespace corvane::benchmarks {

/// A product that varies in colour and size, each with about the square root of the number of variations as options.
[[nodiscard]] ProductFields makeProductFields(std::size_t variationCount);

}  // namespace corvane::benchmarks
