/// The block of memory behind a JsonValue: nodes in the order of the document, then the bytes of its texts.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "corvane/platform/foundation/json_value.h"

namespace corvane::json_detail {

struct Document {
  mutable std::atomic<std::uint32_t> references{1};

  [[nodiscard]] Node* nodes() noexcept { return reinterpret_cast<Node*>(this + 1); }
  [[nodiscard]] const Node* nodes() const noexcept { return reinterpret_cast<const Node*>(this + 1); }

 private:
  // Keeps the nodes behind this header aligned.
  [[maybe_unused]] std::uint64_t padding_ = 0;
};

static_assert(sizeof(Document) % alignof(Node) == 0);

}  // namespace corvane::json_detail
