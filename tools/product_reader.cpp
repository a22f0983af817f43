#include "tools/product_reader.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace corvane::tools {

namespace {

std::string lastError() { return std::generic_category().message(errno); }

}  // namespace

std::expected<ProductReader, std::string> ProductReader::open(const std::string& path) {
  if (path == "-") return ProductReader(STDIN_FILENO);
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::unexpected("cannot be opened: " + lastError());
  return ProductReader(file);
}

ProductReader::ProductReader(ProductReader&& other) noexcept
    : file_(std::exchange(other.file_, -1)),
      chunk_(std::move(other.chunk_)),
      position_(other.position_),
      isAtEnd_(other.isAtEnd_),
      hasReturnedText_(other.hasReturnedText_) {}

ProductReader::~ProductReader() {
  if (file_ > STDIN_FILENO) ::close(file_);
}

std::expected<std::optional<std::string>, std::string> ProductReader::next() {
  std::string text;
  Progress progress;
  bool isObject = false;
  while (true) {
    if (position_ == chunk_.size()) {
      if (const auto filled = fill(); !filled) return std::unexpected(filled.error());
      if (isAtEnd_) break;
    }
    if (text.empty()) {
      position_ = std::min(chunk_.find_first_not_of(" \t\r\n", position_), chunk_.size());
      if (position_ == chunk_.size()) continue;
      isObject = chunk_[position_] == '{';
    }
    std::size_t end = chunk_.size();
    bool isComplete = false;
    if (isObject) {
      end = position_;
      while (!isComplete && end < chunk_.size()) isComplete = endsObject(progress, chunk_[end++]);
    }
    text.append(chunk_, position_, end - position_);
    position_ = end;
    if (text.size() > largestProduct) return std::unexpected("a single product is larger than 64 MiB");
    if (isComplete) {
      hasReturnedText_ = true;
      return text;
    }
  }
  if (text.empty() && hasReturnedText_) return std::nullopt;
  hasReturnedText_ = true;
  return text;
}

std::expected<void, std::string> ProductReader::fill() {
  constexpr std::size_t chunkSize = std::size_t{64} * 1024;
  position_ = 0;
  chunk_.resize(chunkSize);
  ssize_t count = -1;
  do {
    count = isAtEnd_ ? 0 : ::read(file_, chunk_.data(), chunkSize);
  } while (count < 0 && errno == EINTR);
  if (count < 0) {
    chunk_.clear();
    return std::unexpected("cannot be read: " + lastError());
  }
  chunk_.resize(static_cast<std::size_t>(count));
  isAtEnd_ = count == 0;
  return {};
}

bool ProductReader::endsObject(Progress& progress, char character) {
  if (progress.isInText) {
    if (progress.isEscaped) {
      progress.isEscaped = false;
    } else if (character == '\\') {
      progress.isEscaped = true;
    } else if (character == '"') {
      progress.isInText = false;
    }
    return false;
  }
  // Whether brackets match is the decoder's business.
  if (character == '"') progress.isInText = true;
  if (character == '{' || character == '[') ++progress.depth;
  return (character == '}' || character == ']') && --progress.depth == 0;
}

}  // namespace corvane::tools
