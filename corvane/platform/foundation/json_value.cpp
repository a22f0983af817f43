#include "corvane/platform/foundation/json_value.h"

#include <bit>
#include <cmath>
#include <new>
#include <utility>

#include "corvane/platform/foundation/json_document.h"

namespace corvane {

namespace json_detail {

constinit const Node nullNode{};
constinit const Node emptyObjectNode{.kind = JsonKind::object, .payload = 1};

}  // namespace json_detail

using json_detail::NumberForm;

std::optional<std::int64_t> wholeNumber(double number) noexcept {
  // 2^63 itself is the first double above the range; its negative is still inside.
  constexpr double limit = 0x1p63;
  const bool isInRange = number >= -limit && number < limit;
  if (!isInRange || std::trunc(number) != number) return std::nullopt;
  return static_cast<std::int64_t>(number);
}

std::optional<bool> JsonView::boolean() const noexcept {
  if (kind() != JsonKind::boolean) return std::nullopt;
  return node_->payload != 0;
}

std::optional<double> JsonView::number() const noexcept {
  switch (node_->form) {
    case NumberForm::none:
      return std::nullopt;
    case NumberForm::signedInteger:
      return static_cast<double>(static_cast<std::int64_t>(node_->payload));
    case NumberForm::unsignedInteger:
      return static_cast<double>(node_->payload);
    case NumberForm::largeInteger:
    case NumberForm::real:
      return std::bit_cast<double>(node_->payload);
  }
  std::unreachable();
}

std::optional<std::int64_t> JsonView::integer() const noexcept {
  if (node_->form == NumberForm::signedInteger) return static_cast<std::int64_t>(node_->payload);
  if (node_->form != NumberForm::real) return std::nullopt;
  return wholeNumber(std::bit_cast<double>(node_->payload));
}

std::size_t JsonView::size() const noexcept { return node_->isContainer() ? node_->size : 0; }

std::optional<JsonView> JsonView::find(std::string_view key) const noexcept {
  std::optional<JsonView> found;
  for (const Member member : members()) {
    if (member.key == key) found = member.value;
  }
  return found;
}

JsonValue::JsonValue(const json_detail::Document* document) noexcept
    : JsonView(document->nodes()), document_(document) {}

JsonValue::JsonValue(const JsonValue& other) noexcept : JsonView(other), document_(other.document_) {
  if (document_ != nullptr) document_->references.fetch_add(1, std::memory_order_relaxed);
}

JsonValue::JsonValue(JsonValue&& other) noexcept
    : JsonView(std::exchange(other.node_, &json_detail::nullNode)),
      document_(std::exchange(other.document_, nullptr)) {}

JsonValue& JsonValue::operator=(JsonValue other) noexcept {
  std::swap(node_, other.node_);
  std::swap(document_, other.document_);
  return *this;
}

JsonValue::~JsonValue() {
  if (document_ == nullptr) return;
  // Nobody can share a document that has one handle left, so the costlier count down can be spared.
  const bool isLast = document_->references.load(std::memory_order_acquire) == 1 ||
                      document_->references.fetch_sub(1, std::memory_order_acq_rel) == 1;
  if (!isLast) return;
  document_->~Document();
  ::operator delete(const_cast<json_detail::Document*>(document_));
}

}  // namespace corvane
