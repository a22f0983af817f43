/// Whether the library takes a product, and all of it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/finding.h"
#include "tools/product_reader.h"

namespace corvane::tools {

struct CheckedProduct {
  std::string text;  ///< as the page gets it, if that was asked for and the product is taken
  std::vector<Finding> findings;
};

/// Checks one product after the other, with buffers that it keeps. Threads: any, one at a time.
class ProductCheck {
 public:
  enum class Output { text, verdict };

  explicit ProductCheck(Output output);
  ~ProductCheck();

  [[nodiscard]] CheckedProduct check(const ProductText& product);

 private:
  class Decoder;

  std::unique_ptr<Decoder> decoder_;
};

}  // namespace corvane::tools
