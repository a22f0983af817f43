/// How much text a product becomes.
#pragma once

#include <cstddef>

#include "corvane/export.h"
#include "corvane/product/product.h"

namespace corvane {

/// Roughly how many bytes the JSON text of a product takes, rather too many than too few. Lists of SKUs that variations
/// share are in it. Each stands in the text once for every variation, so that they grow with the square of the number
/// of variations.
[[nodiscard]] CORVANE_EXPORT std::size_t estimatedJsonSize(const Product& product);

}  // namespace corvane
