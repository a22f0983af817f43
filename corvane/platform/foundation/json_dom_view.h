/// Reads JSON where the parser left it, without the detour over a document of our own: for large texts that become
/// records at once.
#pragma once

#include <simdjson.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "corvane/platform/foundation/json_value.h"

namespace corvane {

/// The reading operations of a JsonView over the parser's own memory, which lives until the parser is used again.
class JsonDomView {
 public:
  struct Member;
  class Elements;
  class Members;

  explicit JsonDomView(simdjson::dom::element element) : element_(element) {}

  [[nodiscard]] JsonKind kind() const {
    using simdjson::dom::element_type;
    switch (element_.type()) {
      case element_type::NULL_VALUE:
        return JsonKind::null;
      case element_type::BOOL:
        return JsonKind::boolean;
      case element_type::STRING:
        return JsonKind::string;
      case element_type::ARRAY:
        return JsonKind::array;
      case element_type::OBJECT:
        return JsonKind::object;
      case element_type::INT64:
      case element_type::UINT64:
      case element_type::DOUBLE:
        return JsonKind::number;
    }
    return JsonKind::null;
  }
  [[nodiscard]] bool isNull() const { return element_.is_null(); }
  [[nodiscard]] bool isObject() const { return element_.is_object(); }
  [[nodiscard]] bool isArray() const { return element_.is_array(); }
  [[nodiscard]] std::optional<bool> boolean() const { return read<bool>(); }
  [[nodiscard]] std::optional<std::string_view> string() const { return read<std::string_view>(); }
  [[nodiscard]] std::optional<double> number() const { return read<double>(); }
  [[nodiscard]] std::optional<std::int64_t> integer() const {
    if (const auto whole = read<std::int64_t>()) return whole;
    if (element_.type() != simdjson::dom::element_type::DOUBLE) return std::nullopt;
    return wholeNumber(element_.get_double().value_unsafe());
  }
  [[nodiscard]] std::size_t size() const {
    return isArray() ? simdjson::dom::array(element_.get_array().value_unsafe()).size() : 0;
  }
  [[nodiscard]] Elements elements() const;
  [[nodiscard]] Members members() const;

 private:
  template <class Value>
  [[nodiscard]] std::optional<Value> read() const {
    Value value;
    if (element_.get(value) != simdjson::SUCCESS) return std::nullopt;
    return value;
  }

  simdjson::dom::element element_;
};

struct JsonDomView::Member {
  std::string_view key;
  JsonDomView value;
};

/// The elements of an array.
class JsonDomView::Elements {
 public:
  class Iterator {
   public:
    explicit Iterator(simdjson::dom::array::iterator iterator) : iterator_(iterator) {}
    JsonDomView operator*() const { return JsonDomView(*iterator_); }
    Iterator& operator++() {
      ++iterator_;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return iterator_ != other.iterator_; }

   private:
    simdjson::dom::array::iterator iterator_;
  };
  explicit Elements(simdjson::dom::array array) : array_(array) {}
  [[nodiscard]] Iterator begin() const { return Iterator(array_.begin()); }
  [[nodiscard]] Iterator end() const { return Iterator(array_.end()); }

 private:
  simdjson::dom::array array_;
};

/// The members of an object.
class JsonDomView::Members {
 public:
  class Iterator {
   public:
    explicit Iterator(simdjson::dom::object::iterator iterator) : iterator_(iterator) {}
    Member operator*() const { return {iterator_.key(), JsonDomView(iterator_.value())}; }
    Iterator& operator++() {
      ++iterator_;
      return *this;
    }
    bool operator!=(const Iterator& other) const { return iterator_ != other.iterator_; }

   private:
    simdjson::dom::object::iterator iterator_;
  };
  explicit Members(simdjson::dom::object object) : object_(object) {}
  [[nodiscard]] Iterator begin() const { return Iterator(object_.begin()); }
  [[nodiscard]] Iterator end() const { return Iterator(object_.end()); }

 private:
  simdjson::dom::object object_;
};

// Asked of an array or an object only.
inline JsonDomView::Elements JsonDomView::elements() const { return Elements(element_.get_array().value_unsafe()); }
inline JsonDomView::Members JsonDomView::members() const { return Members(element_.get_object().value_unsafe()); }

}  // namespace corvane
