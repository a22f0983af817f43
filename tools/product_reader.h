/// Takes the products out of a file one after the other.
#pragma once

#include <cstddef>
#include <expected>
#include <optional>
#include <string>

namespace corvane::tools {

/// Reads a file as a sequence of JSON objects, so that its size does not matter, only that of a single product. What
/// does not look like an object is returned together with all that follows it, for the decoder to say what is wrong.
///
/// Ownership: owns the open file. Threads: any, one at a time. Failure: a message for people; nothing can be read after
/// it.
class ProductReader {
 public:
  /// Far above any product, and low enough for a device that never ends.
  static constexpr std::size_t largestProduct = std::size_t{64} * 1024 * 1024;

  /// Opens a file, or standard input for "-".
  static std::expected<ProductReader, std::string> open(const std::string& path);

  ProductReader(const ProductReader&) = delete;
  ProductReader& operator=(const ProductReader&) = delete;
  ProductReader(ProductReader&& other) noexcept;
  ProductReader& operator=(ProductReader&&) = delete;
  ~ProductReader();

  /// The text of the next product; none at the end. An empty file holds one empty text.
  std::expected<std::optional<std::string>, std::string> next();

 private:
  explicit ProductReader(int file) : file_(file) {}

  /// How far into an object the text has come.
  struct Progress {
    std::size_t depth = 0;
    bool isInText = false;
    bool isEscaped = false;
  };

  std::expected<void, std::string> fill();
  [[nodiscard]] static bool endsObject(Progress& progress, char character);

  int file_;
  std::string chunk_;
  std::size_t position_ = 0;
  bool isAtEnd_ = false;
  bool hasReturnedText_ = false;
};

}  // namespace corvane::tools
