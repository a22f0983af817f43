/// Views that make something else of other views: `view | modifier`.
#pragma once

#include <concepts>
#include <utility>

#include "corvane/platform/declarative/view.h"

namespace corvane {

/// The base of modifiers. A modifier has a member function template `body(content)`, which returns a view with the
/// content in it. It is called once, on a modifier that is not needed any more.
struct ViewModifier {};

template <View Content, std::derived_from<ViewModifier> Modifier>
struct ModifiedView {
  Content content;
  Modifier modifier;
};
template <class Content, class Modifier>
inline constexpr bool isBuiltInView<ModifiedView<Content, Modifier>> = true;

template <View Content, std::derived_from<ViewModifier> Modifier>
[[nodiscard]] ModifiedView<Content, Modifier> operator|(Content content, Modifier modifier) {
  return {std::move(content), std::move(modifier)};
}

/// The modifier's body is a part of the body that the modified view is in, also as to what it depends on.
template <class Content, class Modifier>
class NodeOf<ModifiedView<Content, Modifier>> final : public ViewNode {
 public:
  NodeOf(ModifiedView<Content, Modifier> value, ViewPass& pass)
      : body_(std::move(value.modifier).body(std::move(value.content)), pass) {}
  void update(ModifiedView<Content, Modifier> value, ViewPass& pass) {
    body_.update(std::move(value.modifier).body(std::move(value.content)), pass);
  }
  void refresh(ViewPass& pass) override { body_.refresh(pass); }
  void unmount(ViewPass& pass) override { body_.unmount(pass); }

 private:
  NodeOf<decltype(std::declval<Modifier>().body(std::declval<Content>()))> body_;
};

}  // namespace corvane
