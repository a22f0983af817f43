/// The products that the host app offers.
#pragma once

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

#include "corvane/product/product.h"

namespace corvane::demo {

/// Reads a few products of a folder of JSON files; a text for developers where one cannot be read.
[[nodiscard]] std::expected<std::vector<Product>, std::string> readProducts(const std::filesystem::path& folder);

/// The variation that a product shows first.
[[nodiscard]] const Variation& firstShown(const Product& product);

}  // namespace corvane::demo
