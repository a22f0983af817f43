/// The part of a file that is being looked at.
#pragma once

#include <cstddef>
#include <expected>
#include <string>
#include <string_view>

#include "tools/text_position.h"

namespace corvane::tools {

/// Holds as much of a file in memory as is asked for at a time, and knows where it stands in it.
///
/// Ownership: owns the open file. Threads: any, one at a time. Failure: a message for people; nothing can be read after
/// it.
class InputWindow {
 public:
  /// What may be read behind the text without harm, as fast parsers do.
  static constexpr std::size_t padding = 64;

  /// Opens a file, or standard input for "-".
  static std::expected<InputWindow, std::string> open(const std::string& path);

  InputWindow(const InputWindow&) = delete;
  InputWindow& operator=(const InputWindow&) = delete;
  InputWindow(InputWindow&& other) noexcept;
  InputWindow& operator=(InputWindow&&) = delete;
  ~InputWindow();

  /// What has been read and not yet consumed; valid until the next `fill`.
  [[nodiscard]] std::string_view text() const { return std::string_view(buffer_).substr(begin_, end_ - begin_); }
  /// Where the text begins.
  [[nodiscard]] const TextPosition& position() const { return position_; }
  /// Reads on; false at the end of the file, from then on.
  std::expected<bool, std::string> fill();
  /// Drops the beginning of the text.
  void consume(std::size_t count);

 private:
  explicit InputWindow(int file) : file_(file) {}
  void makeRoom();

  int file_;
  std::string buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  bool isAtEnd_ = false;
  TextPosition position_;
};

}  // namespace corvane::tools
