/// Writes JSON text, value by value, into one buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corvane {

/// A streaming writer. The caller opens and closes containers in pairs and writes a key before each member's value.
/// The buffer grows by doubling; nothing else is allocated.
///
/// Failure: text that is not UTF-8, and a number that is not finite, is an `EncodingError` without a path. Whoever
///          knows where the value stands adds it.
class JsonWriter {
 public:
  /// Makes room for this many more characters at once.
  void reserve(std::size_t count) { static_cast<void>(roomFor(count)); }

  void beginObject() { beginContainer('{'); }
  void endObject() { endContainer('}'); }
  void beginArray() { beginContainer('['); }
  void endArray() { endContainer(']'); }

  /// A name out of our own code: plain ASCII without anything to escape.
  void key(std::string_view name);
  void text(std::string_view value);
  void integer(std::int64_t value);
  /// The shortest decimal that reads back as the same 32-bit float.
  void real(float value);
  void boolean(bool value);

  /// Writes a value that may be written again: `write` writes it the first time, its text is copied after that. Values
  /// are told apart by their address, which must stay theirs until the text is taken.
  template <class Write>
  void shared(const void* address, Write write) {
    const auto known = sharedTexts_.find(address);
    if (known != sharedTexts_.end()) return copyOf(known->second);
    separate();
    needsComma_ = false;
    const std::size_t begin = size_;
    write();
    sharedTexts_.emplace(address, Extent{begin, size_ - begin});
  }

  /// What has been written; the writer starts anew.
  [[nodiscard]] std::string take();

 private:
  /// A part of the text, which may move while it grows.
  struct Extent {
    std::size_t begin;
    std::size_t size;
  };

  /// The end of a text, from its first character that needs an escape on.
  void appendEscaped(std::string_view rest, bool isBeforeAscii);
  void copyOf(Extent extent);
  void beginContainer(char bracket);
  void endContainer(char bracket);
  void separate();
  /// Room for more characters; they count once `size_` has moved over them.
  char* roomFor(std::size_t count);
  void append(std::string_view characters);

  std::string buffer_;
  std::size_t size_ = 0;
  bool needsComma_ = false;
  /// Takes its memory in few large pieces, however many values are shared.
  std::pmr::monotonic_buffer_resource sharedTextMemory_;
  std::pmr::unordered_map<const void*, Extent> sharedTexts_{&sharedTextMemory_};
};

}  // namespace corvane
