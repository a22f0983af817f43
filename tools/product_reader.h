/// Takes the products out of a file one after the other.
#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "tools/input_window.h"
#include "tools/json_syntax.h"
#include "tools/text_position.h"

namespace corvane::tools {

/// A value that stands where a product should. The text lives until the reader is asked for the next one, and may be
/// read `InputWindow::padding` bytes beyond its end.
struct ProductText {
  std::string_view text;
  TextPosition begin;
  std::size_t number;  ///< in its file, from 1
};

/// Text that is no JSON.
struct BrokenText {
  TextPosition position;
  std::string reason;
  std::size_t number = 0;        ///< of the product that it belongs to, or 0
  std::size_t skippedBytes = 0;  ///< how much of the file is not read because of it
};

/// Reads a file as a sequence of products or as arrays of them, so that its size does not matter, only that of a single
/// product. Behind an error it goes on where the next product seems to begin.
///
/// Ownership: owns the open file. Threads: any, one at a time. Failure: a message for people; nothing can be read after
/// it.
class ProductReader {
 public:
  /// Far above any product, and low enough for a device that never ends.
  static constexpr std::size_t largestProduct = std::size_t{64} * 1024 * 1024;

  using Item = std::variant<ProductText, BrokenText>;
  /// Absent at the end.
  using NextItem = std::expected<std::optional<Item>, std::string>;

  explicit ProductReader(InputWindow window) : window_(std::move(window)) {}

  NextItem next();
  [[nodiscard]] std::size_t bytesRead() const { return window_.position().byte - 1; }

 private:
  enum class Expected { product, productOrEnd, separator };

  std::expected<bool, std::string> skipBlanks();
  NextItem readProduct();
  NextItem readWord();
  ProductText take(std::size_t size);
  NextItem endOfFile();
  /// An error at the beginning of the text, between products.
  [[nodiscard]] BrokenText stray(std::string_view expected) const;
  NextItem brokenProduct(const SyntaxError& error);
  /// Skips from an offset of the text to the next product, and notes how much that was.
  NextItem recover(BrokenText broken, std::size_t offset);
  std::expected<void, std::string> skipToProductLine(std::size_t lastColumn);
  std::expected<bool, std::string> isAtProductLine(std::size_t lastColumn);
  [[nodiscard]] bool isProductAt(std::size_t offset) const;

  InputWindow window_;
  Expected expected_ = Expected::productOrEnd;
  bool isInArray_ = false;
  bool isSettled_ = false;  ///< the end of the file is no news
  std::size_t pending_ = 0;
  std::size_t number_ = 0;
};

}  // namespace corvane::tools
