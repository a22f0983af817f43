/// Writes JSON text, value by value, into one buffer.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvane {

/// A streaming writer. The caller opens and closes containers in pairs and writes a key before each member's value.
///
/// Failure: text that is not UTF-8 is an `EncodingError`, whose path is that of the value below the caller's.
class JsonWriter {
 public:
  void beginObject() { beginContainer('{'); }
  void endObject() { endContainer('}'); }
  void beginArray() { beginContainer('['); }
  void endArray() { endContainer(']'); }

  void key(std::string_view name);
  void text(std::string_view value);
  void integer(std::int64_t value);
  void boolean(bool value);

  /// What has been written; the writer starts anew.
  [[nodiscard]] std::string take();

 private:
  void beginContainer(char bracket);
  void endContainer(char bracket);
  void separate();
  void quoted(std::string_view text);

  std::string text_;
  bool needsComma_ = false;
};

}  // namespace corvane
