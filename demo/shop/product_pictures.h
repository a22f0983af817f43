/// Pictures of the products that the host app offers.
#pragma once

#include <cstddef>
#include <string>

namespace corvane::demo {

/// The file with the picture of a product, by its index among those that `readProducts` gives.
[[nodiscard]] std::string pictureFile(std::size_t index);

}  // namespace corvane::demo
