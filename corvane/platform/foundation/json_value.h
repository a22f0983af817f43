/// JSON values: the form in which page messages and answers travel through the framework.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <expected>
#include <optional>
#include <string_view>

#include "corvane/export.h"
#include "corvane/platform/foundation/coding_error.h"

namespace corvane {

enum class JsonKind : std::uint8_t { null, boolean, number, string, array, object };

/// The number as an integer, where it is a whole one within 64 bits.
[[nodiscard]] CORVANE_EXPORT std::optional<std::int64_t> wholeNumber(double number) noexcept;

namespace json_detail {

/// An integer beyond 64 bits is kept as a double, but is none of the integers that fit.
enum class NumberForm : std::uint8_t { none, signedInteger, unsignedInteger, largeInteger, real };

/// A value of a parsed document. Documents are flat: a container is followed by everything inside it, so that
/// neither reading nor freeing one ever recurses.
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
  [[nodiscard]] std::string_view text() const noexcept { return {reinterpret_cast<const char*>(this) + payload, size}; }
};

struct Document;
CORVANE_EXPORT extern const Node nullNode;
CORVANE_EXPORT extern const Node emptyObjectNode;

}  // namespace json_detail

/// A value inside a JSON document that somebody else keeps alive. Copying costs nothing; texts are views.
class CORVANE_EXPORT JsonView {
 public:
  struct Member;
  template <class Item>
  class Range;
  using Elements = Range<JsonView>;
  using Members = Range<Member>;

  /// A null.
  JsonView() noexcept : node_(&json_detail::nullNode) {}

  /// An object without members.
  static JsonView emptyObject() noexcept { return JsonView(&json_detail::emptyObjectNode); }

  [[nodiscard]] JsonKind kind() const noexcept { return node_->kind; }
  [[nodiscard]] bool isNull() const noexcept { return kind() == JsonKind::null; }
  [[nodiscard]] bool isObject() const noexcept { return kind() == JsonKind::object; }
  [[nodiscard]] bool isArray() const noexcept { return kind() == JsonKind::array; }

  /// The Boolean, or none for any other kind of value; 0 and 1 are numbers.
  [[nodiscard]] std::optional<bool> boolean() const noexcept;
  /// The UTF-8 text, or none for any other kind of value. It may hold NUL characters.
  [[nodiscard]] std::optional<std::string_view> string() const noexcept {
    if (kind() != JsonKind::string) return std::nullopt;
    return node_->text();
  }
  /// The number, rounded to the nearest double and infinite beyond their range, or none for any other kind of value.
  [[nodiscard]] std::optional<double> number() const noexcept;
  /// The number if it is a whole one within 64 bits, however it is written (3, 3.0, 3e0); none otherwise.
  [[nodiscard]] std::optional<std::int64_t> integer() const noexcept;

  /// How many elements or members a container holds; 0 for every other value.
  [[nodiscard]] std::size_t size() const noexcept;
  /// The member of an object under a key; none where there is no such member or this is no object. Where a key
  /// occurs twice the last one counts, as in the page's own script engine.
  [[nodiscard]] std::optional<JsonView> find(std::string_view key) const noexcept;
  /// The text of a member; none where there is no such member or it is something else.
  [[nodiscard]] std::optional<std::string_view> findString(std::string_view key) const noexcept {
    const auto member = find(key);
    return member ? member->string() : std::nullopt;
  }
  /// The elements of an array in order; none for any other value.
  [[nodiscard]] CORVANE_HIDDEN Elements elements() const noexcept;
  /// The members of an object in order; none for any other value.
  [[nodiscard]] Members members() const noexcept;

  /// False where the value, or anything inside it, was written with half a surrogate pair. Such text has no UTF-8
  /// form; it reads with U+FFFD in place of the half.
  [[nodiscard]] bool isWellFormed() const noexcept { return node_->isWellFormed; }

 protected:
  explicit JsonView(const json_detail::Node* node) noexcept : node_(node) {}

  const json_detail::Node* node_;
};

/// A JSON document, kept alive by its handles.
///
/// A handle is as large as two pointers; copying it copies no JSON. Documents never change, so that handles may be
/// used from several threads, each by one thread at a time.
class CORVANE_EXPORT JsonValue : public JsonView {
 public:
  /// A null.
  JsonValue() noexcept = default;
  JsonValue(const JsonValue& other) noexcept;
  JsonValue(JsonValue&& other) noexcept;
  JsonValue& operator=(JsonValue other) noexcept;
  ~JsonValue();

  /// What these give borrows from the document.
  [[nodiscard]] std::optional<std::string_view> string() const noexcept CORVANE_LIFETIMEBOUND {
    return JsonView::string();
  }
  [[nodiscard]] std::optional<JsonView> find(std::string_view key) const noexcept CORVANE_LIFETIMEBOUND {
    return JsonView::find(key);
  }
  [[nodiscard]] std::optional<std::string_view> findString(std::string_view key) const noexcept CORVANE_LIFETIMEBOUND {
    return JsonView::findString(key);
  }
  [[nodiscard]] Elements elements() const noexcept CORVANE_LIFETIMEBOUND;
  [[nodiscard]] Members members() const noexcept CORVANE_LIFETIMEBOUND;

  /// Containers nested deeper than this are refused.
  static constexpr std::size_t maximumDepth = 1024;

  /// Reads a JSON text (UTF-8, RFC 8259). Integers beyond 64 bits are read as doubles. Anything else than one valid
  /// value gives a `dataCorrupted` error.
  [[nodiscard]] static std::expected<JsonValue, DecodingError> parse(std::string_view text);

 private:
  explicit JsonValue(const json_detail::Document* document) noexcept;

  const json_detail::Document* document_ = nullptr;
};

/// A member of an object.
struct JsonView::Member {
  std::string_view key;
  JsonView value;
};

/// The elements of an array or the members of an object, for range-based loops.
template <class Item>
class JsonView::Range {
 public:
  class Iterator {
   public:
    Item operator*() const noexcept {
      if constexpr (isOfMembers) {
        return {node_->text(), JsonView(node_ + 1)};
      } else {
        return JsonView(node_);
      }
    }
    Iterator& operator++() noexcept {
      node_ = (isOfMembers ? node_ + 1 : node_)->next();
      return *this;
    }
    bool operator==(const Iterator&) const = default;

   private:
    friend class Range;
    static constexpr bool isOfMembers = std::same_as<Item, Member>;
    explicit Iterator(const json_detail::Node* node) noexcept : node_(node) {}
    const json_detail::Node* node_;
  };

  [[nodiscard]] Iterator begin() const noexcept { return Iterator(first_); }
  [[nodiscard]] Iterator end() const noexcept { return Iterator(last_); }

 private:
  friend class JsonView;
  Range(const json_detail::Node* first, const json_detail::Node* last) noexcept : first_(first), last_(last) {}
  const json_detail::Node* first_;
  const json_detail::Node* last_;
};

inline JsonView::Elements JsonView::elements() const noexcept {
  return isArray() ? Elements(node_ + 1, node_->next()) : Elements(nullptr, nullptr);
}

inline JsonView::Members JsonView::members() const noexcept {
  return isObject() ? Members(node_ + 1, node_->next()) : Members(nullptr, nullptr);
}

inline JsonView::Elements JsonValue::elements() const noexcept { return JsonView::elements(); }
inline JsonView::Members JsonValue::members() const noexcept { return JsonView::members(); }

}  // namespace corvane
