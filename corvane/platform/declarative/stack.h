/// Rows and columns of view values.
#pragma once

#include <optional>
#include <utility>

#include "corvane/platform/declarative/view.h"
#include "corvane/platform/declarative/z_stack.h"
#include "corvane/platform/views/ui_stack_view.h"

namespace corvane {

/// Shows views one after the other, each as large as fits it; see `UIStackView`. A view that is absent takes no room.
template <StackAxis axis, View... Children>
struct Stack {
  StackStyle style;
  ZStack<Children...> children;
};
template <StackAxis axis, class... Children>
inline constexpr bool isBuiltInView<Stack<axis, Children...>> = true;

/// A column, from the top on.
template <View... Children>
// NOLINTNEXTLINE(readability-identifier-naming): named as what it makes
[[nodiscard]] Stack<StackAxis::vertical, Children...> VStack(StackStyle style, Children... children) {
  return {style, ZStack<Children...>(std::move(children)...)};
}
/// A row, from the left on.
template <View... Children>
// NOLINTNEXTLINE(readability-identifier-naming): named as what it makes
[[nodiscard]] Stack<StackAxis::horizontal, Children...> HStack(StackStyle style, Children... children) {
  return {style, ZStack<Children...>(std::move(children)...)};
}

template <StackAxis axis, class... Children>
class NodeOf<Stack<axis, Children...>> final : public ViewNode {
 public:
  NodeOf(Stack<axis, Children...> value, ViewPass& pass)
      : view_(UIStackView::create(axis, value.style)), inside_(view_) {
    pass.container().add(view_);
    const ViewPass::Inside inside(pass, inside_);
    children_.emplace(std::move(value.children), pass);
  }
  void update(Stack<axis, Children...> value, ViewPass& pass) {
    pass.container().keep(*view_);
    view_->setStyle(value.style);
    const ViewPass::Inside inside(pass, inside_);
    children_->update(std::move(value.children), pass);
  }
  void refresh(ViewPass& pass) override {
    pass.container().keep(*view_);
    const ViewPass::Inside inside(pass, inside_);
    children_->refresh(pass);
  }
  void unmount(ViewPass& pass) override {
    {
      const ViewPass::Inside inside(pass, inside_);
      children_->unmount(pass);
    }
    pass.container().remove(view_);
  }

 private:
  std::shared_ptr<UIStackView> view_;
  ViewContainer inside_;
  std::optional<NodeOf<ZStack<Children...>>> children_;
};

}  // namespace corvane
