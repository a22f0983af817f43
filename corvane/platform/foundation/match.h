/// Matching of sum types: one arm an alternative, none forgotten.
#pragma once

#include <utility>
#include <variant>

namespace corvane {

namespace match_detail {

template <class... Arms>
struct Overloaded : Arms... {
  using Arms::operator()...;
};

}  // namespace match_detail

/// Calls the arm that takes the variant's present alternative. Without a catch-all arm a forgotten alternative does
/// not compile.
template <class Variant, class... Arms>
decltype(auto) match(Variant&& variant, Arms&&... arms) {
  return std::visit(match_detail::Overloaded<std::decay_t<Arms>...>{std::forward<Arms>(arms)...},
                    std::forward<Variant>(variant));
}

/// What sum types have in common. The type itself offers `value()`, the variant of its cases.
template <class Sum>
class SumType {  // NOLINT(bugprone-crtp-constructor-accessibility): nothing to guard
 public:
  /// The values of this case, or null when another one is present.
  template <class Case>
  [[nodiscard]] const Case* getIf() const {
    return std::get_if<Case>(&self().value());
  }
  template <class Case>
  [[nodiscard]] bool is() const {
    return std::holds_alternative<Case>(self().value());
  }
  /// Calls the arm that takes the present case.
  template <class... Arms>
  decltype(auto) match(Arms&&... arms) const {
    return corvane::match(self().value(), std::forward<Arms>(arms)...);
  }
  bool operator==(const SumType&) const = default;

 private:
  [[nodiscard]] const Sum& self() const { return static_cast<const Sum&>(*this); }
};

}  // namespace corvane
