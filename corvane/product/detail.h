/// What there is to say about a variation.
#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/foundation/match.h"

namespace corvane {

/// A list of points or a paragraph. `encodeJson` and `decodeJson` take it; a kind out of a later protocol is read as
/// `Unknown` and written as an empty object.
class Detail : public SumType<Detail> {
 public:
  /// A list of points.
  struct Bullets {
    std::vector<std::string> points;
  };
  /// A running text.
  struct Paragraph {
    std::string text;
  };
  struct Unknown {};
  using Value = std::variant<Bullets, Paragraph, Unknown>;

  static Detail bullets(std::vector<std::string> points) { return Detail(Bullets{std::move(points)}); }
  static Detail paragraph(std::string text) { return Detail(Paragraph{std::move(text)}); }
  static Detail unknown() { return Detail(Unknown{}); }

  [[nodiscard]] const Value& value() const CORVANE_LIFETIMEBOUND { return value_; }

  /// The same kind with the same contents. What is unknown is equal to nothing, not even to itself.
  friend bool operator==(const Detail& left, const Detail& right) {
    if (const auto* bullets = std::get_if<Bullets>(&left.value_)) {
      const auto* other = std::get_if<Bullets>(&right.value_);
      return other != nullptr && bullets->points == other->points;
    }
    const auto* paragraph = std::get_if<Paragraph>(&left.value_);
    const auto* other = std::get_if<Paragraph>(&right.value_);
    return paragraph != nullptr && other != nullptr && paragraph->text == other->text;
  }

 private:
  explicit Detail(Value value) : value_(std::move(value)) {}

  Value value_;
};

}  // namespace corvane
