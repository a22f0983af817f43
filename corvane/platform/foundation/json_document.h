/// The flat layout behind JsonValue: one block of memory a document, nodes first, then the bytes of its texts.
#pragma once

#include <atomic>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "corvane/platform/foundation/json_value.h"

namespace corvane::json_detail {

enum class NumberForm : std::uint8_t { none, signedInteger, unsignedInteger, real };

struct Node {
  JsonKind kind = JsonKind::null;
  NumberForm form = NumberForm::none;
  /// False where this text, or any text inside this container, held half a surrogate pair.
  bool isWellFormed = true;
  /// Bytes of a text, elements of an array, members of an object.
  std::uint32_t size = 0;
  /// A Boolean, the bits of a number, the distance in bytes from this node to its text, or the number of nodes that
  /// a container takes up, itself included. A member is a text node followed by its value.
  std::uint64_t payload = 0;

  [[nodiscard]] bool isContainer() const noexcept { return kind == JsonKind::array || kind == JsonKind::object; }
  [[nodiscard]] const Node* next() const noexcept { return this + (isContainer() ? payload : 1); }
  [[nodiscard]] std::string_view text() const noexcept {
    return {reinterpret_cast<const char*>(this) + payload, size};
  }
  [[nodiscard]] double real() const noexcept { return std::bit_cast<double>(payload); }
};

struct Document {
  explicit Document(std::size_t count) noexcept : nodeCount(count) {}

  mutable std::atomic<std::uint32_t> references{1};
  std::size_t nodeCount;

  [[nodiscard]] Node* nodes() noexcept { return reinterpret_cast<Node*>(this + 1); }
  [[nodiscard]] const Node* nodes() const noexcept { return reinterpret_cast<const Node*>(this + 1); }
};

static_assert(sizeof(Node) == 16 && sizeof(Document) % alignof(Node) == 0);

}  // namespace corvane::json_detail
