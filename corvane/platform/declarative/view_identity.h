/// Views that are others although their types are the same.
#pragma once

#include <concepts>
#include <utility>

#include "corvane/platform/declarative/view.h"
#include "corvane/platform/declarative/view_modifier.h"

namespace corvane {

template <View Content, std::equality_comparable Identity>
struct IdentifiedView {
  Content content;
  Identity identity;
};
template <class Content, class Identity>
inline constexpr bool isBuiltInView<IdentifiedView<Content, Identity>> = true;

template <std::equality_comparable Identity>
class IdentityModifier : public ViewModifier {
 public:
  explicit IdentityModifier(Identity identity) : identity_(std::move(identity)) {}
  template <View Content>
  [[nodiscard]] IdentifiedView<Content, Identity> body(Content content) && {
    return {std::move(content), std::move(identity_)};
  }

 private:
  Identity identity_;
};

/// Makes the view another one, with everything in it, when the identity becomes another one. Modifiers that come after
/// it are outside of it, and stay.
template <std::equality_comparable Identity>
[[nodiscard]] IdentityModifier<Identity> id(Identity identity) {
  return IdentityModifier<Identity>(std::move(identity));
}

template <class Content, class Identity>
class NodeOf<IdentifiedView<Content, Identity>> final : public ViewNode {
 public:
  NodeOf(IdentifiedView<Content, Identity> value, ViewPass& pass) : identity_(std::move(value.identity)) {
    slot_.mount(std::move(value.content), pass);
  }
  void update(IdentifiedView<Content, Identity> value, ViewPass& pass) {
    if (identity_ == value.identity) return slot_.as<Content>().update(std::move(value.content), pass);
    identity_ = std::move(value.identity);
    slot_.mount(std::move(value.content), pass);
  }
  void refresh(ViewPass& pass) override { slot_.refresh(pass); }
  void unmount(ViewPass& pass) override { slot_.clear(pass); }

 private:
  Identity identity_;
  NodeSlot slot_;
};

}  // namespace corvane
