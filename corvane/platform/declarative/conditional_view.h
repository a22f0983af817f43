/// Views that are there or not, or one or another.
///
/// An optional view is a view, and so is a variant of views. What a variant shows keeps its node as long as the
/// alternative stays the same, be the types of two alternatives the same or not.
#pragma once

#include <concepts>
#include <cstddef>
#include <optional>
#include <type_traits>
#include <utility>
#include <variant>

#include "corvane/platform/declarative/view.h"

namespace corvane {

template <class V>
inline constexpr bool isBuiltInView<std::optional<V>> = View<V>;
template <class... Vs>
inline constexpr bool isBuiltInView<std::variant<Vs...>> = (View<Vs> && ...);

/// The view that `make` makes, if the condition holds.
template <std::invocable Make>
[[nodiscard]] std::optional<std::invoke_result_t<Make>> when(bool condition, Make make) {
  if (!condition) return std::nullopt;
  return make();
}

/// The view that the one or the other makes.
template <std::invocable Make, std::invocable MakeOther>
[[nodiscard]] auto when(bool condition, Make make, MakeOther makeOther) {
  using Either = std::variant<std::invoke_result_t<Make>, std::invoke_result_t<MakeOther>>;
  return condition ? Either(std::in_place_index<0>, make()) : Either(std::in_place_index<1>, makeOther());
}

template <class V>
class NodeOf<std::optional<V>> final : public ViewNode {
 public:
  NodeOf(std::optional<V> value, ViewPass& pass) { update(std::move(value), pass); }
  void update(std::optional<V> value, ViewPass& pass) {
    if (!value) return slot_.clear(pass);
    if (slot_.isEmpty()) return slot_.mount(*std::move(value), pass);
    slot_.as<V>().update(*std::move(value), pass);
  }
  void refresh(ViewPass& pass) override { slot_.refresh(pass); }
  void unmount(ViewPass& pass) override { slot_.clear(pass); }

 private:
  NodeSlot slot_;
};

template <class... Vs>
class NodeOf<std::variant<Vs...>> final : public ViewNode {
 public:
  NodeOf(std::variant<Vs...> value, ViewPass& pass) { update(std::move(value), pass); }
  void update(std::variant<Vs...> value, ViewPass& pass) {
    const bool isSame = std::exchange(index_, value.index()) == value.index();
    std::visit(
        [&]<class V>(V&& alternative) {
          if (isSame) return slot_.as<V>().update(std::forward<V>(alternative), pass);
          slot_.mount(std::forward<V>(alternative), pass);
        },
        std::move(value));
  }
  void refresh(ViewPass& pass) override { slot_.refresh(pass); }
  void unmount(ViewPass& pass) override { slot_.clear(pass); }

 private:
  std::size_t index_ = std::variant_npos;
  NodeSlot slot_;
};

}  // namespace corvane
