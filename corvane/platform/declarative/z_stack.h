/// Several views, or none.
#pragma once

#include <cstddef>
#include <optional>
#include <tuple>
#include <utility>

#include "corvane/platform/declarative/view.h"

namespace corvane {

/// Shows nothing.
struct EmptyView {};
template <>
inline constexpr bool isBuiltInView<EmptyView> = true;

template <>
class NodeOf<EmptyView> final : public ViewNode {
 public:
  NodeOf(EmptyView /*value*/, ViewPass& /*pass*/) {}
  void update(EmptyView /*value*/, ViewPass& /*pass*/) {}
  void refresh(ViewPass& /*pass*/) override {}
  void unmount(ViewPass& /*pass*/) override {}
};

/// Shows views one in front of the other, the last one in front.
template <View... Children>
struct ZStack {
  explicit ZStack(Children... children) : children(std::move(children)...) {}
  std::tuple<Children...> children;
};
template <class... Children>
inline constexpr bool isBuiltInView<ZStack<Children...>> = true;

template <class... Children>
class NodeOf<ZStack<Children...>> final : public ViewNode {
 public:
  NodeOf(ZStack<Children...> value, ViewPass& pass) {
    each([&]<std::size_t index> {
      std::get<index>(children_).emplace(std::get<index>(std::move(value.children)), pass);
    });
  }
  void update(ZStack<Children...> value, ViewPass& pass) {
    each([&]<std::size_t index> {
      std::get<index>(children_)->update(std::get<index>(std::move(value.children)), pass);
    });
  }
  void refresh(ViewPass& pass) override {
    each([&]<std::size_t index> { std::get<index>(children_)->refresh(pass); });
  }
  void unmount(ViewPass& pass) override {
    each([&]<std::size_t index> { std::get<sizeof...(Children) - 1 - index>(children_)->unmount(pass); });
  }

 private:
  template <class Step>
  static void each(Step step) {
    [&]<std::size_t... indexes>(std::index_sequence<indexes...>) {
      (step.template operator()<indexes>(), ...);
    }(std::index_sequence_for<Children...>());
  }

  std::tuple<std::optional<NodeOf<Children>>...> children_;
};

}  // namespace corvane
