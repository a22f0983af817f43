/// Matching of sum types: one arm an alternative, none forgotten.
#pragma once

#include <concepts>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <variant>

#include "corvane/export.h"

namespace corvane {

namespace match_detail {

template <class... Arms>
struct Overloaded : Arms... {
  using Arms::operator()...;
};

/// The first line of what a compiler says about it names the alternative.
template <class Alternative, bool hasArm>
struct ArmFor {
  static_assert(hasArm, "match has no arm for this alternative");
  static constexpr bool exists = hasArm;
};

/// Stands in for the outcome where an arm is missing, so that nothing else is complained about.
struct Anything {
  template <class Value>
  operator Value() const;
};

template <class Variant, class Arms>
constexpr bool hasEveryArm = []<std::size_t... index>(std::index_sequence<index...>) {
  return (ArmFor<std::variant_alternative_t<index, std::remove_cvref_t<Variant>>,
                 std::invocable<Arms&, decltype(std::get<index>(std::declval<Variant>()))>>::exists &&
          ...);
}(std::make_index_sequence<std::variant_size_v<std::remove_cvref_t<Variant>>>{});

}  // namespace match_detail

/// Calls the arm that takes the variant's present alternative. Without a catch-all arm a forgotten alternative does
/// not compile.
template <class Variant, class... Arms>
decltype(auto) match(Variant&& variant, Arms&&... arms) {
  using All = match_detail::Overloaded<std::decay_t<Arms>...>;
  // Only then: the standard library would say in fifty lines more what has been said in one.
  if constexpr (match_detail::hasEveryArm<Variant&&, All>) {
    return std::visit(All{std::forward<Arms>(arms)...}, std::forward<Variant>(variant));
  } else {
    return match_detail::Anything{};
  }
}

/// What sum types have in common. The type itself offers `value()`, the variant of its cases.
template <class Sum>
class SumType {  // NOLINT(bugprone-crtp-constructor-accessibility): nothing to guard
 public:
  /// The values of this case, or null when another one is present.
  template <class Case>
  [[nodiscard]] const Case* getIf() const CORVANE_LIFETIMEBOUND {
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
