#include "tools/input_window.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

namespace corvane::tools {

namespace {

constexpr std::size_t chunkSize = std::size_t{256} * 1024;

std::string lastError() { return std::generic_category().message(errno); }

}  // namespace

std::expected<InputWindow, std::string> InputWindow::open(const std::string& path) {
  if (path == "-") return InputWindow(STDIN_FILENO);
  const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (file < 0) return std::unexpected("cannot be opened: " + lastError());
  return InputWindow(file);
}

InputWindow::InputWindow(InputWindow&& other) noexcept
    : file_(std::exchange(other.file_, -1)),
      buffer_(std::move(other.buffer_)),
      begin_(std::exchange(other.begin_, 0)),
      end_(std::exchange(other.end_, 0)),
      isAtEnd_(other.isAtEnd_),
      position_(other.position_) {}

InputWindow::~InputWindow() {
  if (file_ > STDIN_FILENO) ::close(file_);
}

std::expected<bool, std::string> InputWindow::fill() {
  if (isAtEnd_) return false;
  makeRoom();
  ssize_t count = -1;
  do {
    count = ::read(file_, buffer_.data() + end_, buffer_.size() - padding - end_);
  } while (count < 0 && errno == EINTR);
  if (count < 0) return std::unexpected("cannot be read: " + lastError());
  end_ += static_cast<std::size_t>(count);
  isAtEnd_ = count == 0;
  return !isAtEnd_;
}

void InputWindow::consume(std::size_t count) {
  position_.advance(text().substr(0, count));
  begin_ += count;
}

void InputWindow::makeRoom() {
  if (buffer_.size() >= end_ + chunkSize + padding) return;
  std::copy(buffer_.begin() + static_cast<std::ptrdiff_t>(begin_), buffer_.begin() + static_cast<std::ptrdiff_t>(end_),
            buffer_.begin());
  end_ -= std::exchange(begin_, 0);
  // Doubling keeps the copying of a product that comes in many pieces within bounds.
  if (buffer_.size() < 2 * (end_ + chunkSize)) buffer_.resize(2 * (end_ + chunkSize) + padding);
}

}  // namespace corvane::tools
