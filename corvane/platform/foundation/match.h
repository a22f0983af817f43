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

}  // namespace corvane
