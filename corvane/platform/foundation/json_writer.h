/// Writes JSON text, value by value, into one buffer.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

#include "corvane/platform/foundation/coding_error.h"

namespace corvane {

/// A streaming writer. The caller opens and closes containers in pairs and writes a key before each member's value.
/// The buffer grows by doubling; beyond a few shared values nothing else is allocated.
///
/// Every value is followed by a comma, which the end of its container takes back: so nobody has to know whether a value
/// is the first.
///
/// Failure: text that is not UTF-8, and a number that is not finite, is an `EncodingError`. Its path is read from what
///          has been written so far, and costs nothing until then.
class JsonWriter {
 public:
  JsonWriter() = default;
  JsonWriter(const JsonWriter&) = delete;
  JsonWriter& operator=(const JsonWriter&) = delete;

  /// Makes room for this many more characters at once.
  void reserve(std::size_t count) { static_cast<void>(roomFor(count)); }

  void beginObject() { beginContainer('{'); }
  void endObject() { endContainer('}'); }
  void beginArray() { beginContainer('['); }
  void endArray() { endContainer(']'); }

  /// A name out of our own code: plain ASCII without anything to escape. Inline, so that its length is known where it
  /// is copied: a tenth of what a product takes.
  [[gnu::always_inline]] void key(std::string_view name) {
    char* const to = roomFor(name.size() + 3);
    to[0] = '"';
    std::memcpy(to + 1, name.data(), name.size());
    to[name.size() + 1] = '"';
    to[name.size() + 2] = ':';
    end_ = to + name.size() + 3;
  }
  void text(std::string_view value);
  void integer(std::int64_t value);
  /// The shortest decimal that reads back as the same 32-bit float.
  void real(float value);
  void boolean(bool value) { append(value ? "true," : "false,"); }

  /// Writes a value that may be written again: `write` writes it the first time, its text is copied after that. Values
  /// are told apart by their address, which must stay theirs until the text is taken.
  template <class Write>
  void shared(const void* address, Write write) {
    const auto known = sharedTexts_.find(address);
    if (known != sharedTexts_.end()) return copyOf(known->second);
    const std::size_t begin = size();
    write();
    // Without the comma, which may be taken back.
    sharedTexts_.emplace(address, Extent{begin, size() - begin - 1});
  }

  /// An error of the value that would be written now.
  [[nodiscard]] EncodingError errorHere(const char* description) const;

  /// What has been written; the writer starts anew.
  [[nodiscard]] std::string take();

 private:
  /// A part of the text, which may move while it grows.
  struct Extent {
    std::size_t begin;
    std::size_t size;
  };

  /// The rest of a text, from its first character that needs an escape on.
  void appendEscaped(std::string_view rest);
  void copyOf(Extent extent);
  void beginContainer(char bracket) {
    *roomFor(1) = bracket;
    ++end_;
  }
  void endContainer(char bracket) {
    char* const to = roomFor(2);
    end_ = to[-1] == ',' ? to - 1 : to;
    *end_++ = bracket;
    *end_++ = ',';
  }
  [[nodiscard]] std::size_t size() const { return static_cast<std::size_t>(end_ - buffer_.data()); }
  /// Room for more characters; they count once `end_` has moved over them.
  char* roomFor(std::size_t count) {
    if (static_cast<std::size_t>(limit_ - end_) < count) grow(count);
    return end_;
  }
  void grow(std::size_t count);
  void append(std::string_view characters) {
    std::memcpy(roomFor(characters.size()), characters.data(), characters.size());
    end_ += characters.size();
  }

  std::string buffer_;
  char* end_ = buffer_.data();
  char* limit_ = buffer_.data();
  /// What the few values that a small record shares need.
  std::array<std::byte, 512> firstMemory_;
  /// Takes its memory in few large pieces, however many values are shared.
  std::pmr::monotonic_buffer_resource sharedTextMemory_{firstMemory_.data(), firstMemory_.size()};
  std::pmr::unordered_map<const void*, Extent> sharedTexts_{&sharedTextMemory_};
};

}  // namespace corvane
