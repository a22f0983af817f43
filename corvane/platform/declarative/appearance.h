/// What is to be done when a view comes and when it goes.
///
/// When a mount shows something else, the platform views of the new are made at each place before those of the old are
/// taken away. When that is done, the disappear actions of the old are called, those of outer and of later views first.
/// Then come the appear actions of the new, those of inner and of earlier views first. So what both of them set ends up
/// as the new one wants it. Each appear action that was called is followed by exactly one disappear action, the one of
/// the last evaluation. Actions must not throw.
#pragma once

#include <utility>

#include "corvane/platform/declarative/view.h"
#include "corvane/platform/declarative/view_modifier.h"

namespace corvane {

/// A view with an action for its coming and one for its going; either may be empty.
template <View Content>
struct AppearingView {
  Content content;
  ViewAction appear;
  ViewAction disappear;
};
template <class Content>
inline constexpr bool isBuiltInView<AppearingView<Content>> = true;

class AppearanceActionModifier : public ViewModifier {
 public:
  AppearanceActionModifier(ViewAction appear, ViewAction disappear)
      : appear_(std::move(appear)), disappear_(std::move(disappear)) {}

  template <View Content>
  [[nodiscard]] AppearingView<Content> body(Content content) && {
    return {std::move(content), std::move(appear_), std::move(disappear_)};
  }

 private:
  ViewAction appear_;
  ViewAction disappear_;
};

/// Calls the action once the view is shown.
[[nodiscard]] inline AppearanceActionModifier onAppear(ViewAction action) { return {std::move(action), {}}; }
/// Calls the action once the view is no longer shown.
[[nodiscard]] inline AppearanceActionModifier onDisappear(ViewAction action) { return {{}, std::move(action)}; }

template <class Content>
class NodeOf<AppearingView<Content>> final : public ViewNode {
 public:
  NodeOf(AppearingView<Content> value, ViewPass& pass)
      : content_(std::move(value.content), pass), disappear_(std::move(value.disappear)) {
    pass.appear(std::move(value.appear));
  }
  void update(AppearingView<Content> value, ViewPass& pass) {
    disappear_ = std::move(value.disappear);
    content_.update(std::move(value.content), pass);
  }
  void refresh(ViewPass& pass) override { content_.refresh(pass); }
  void unmount(ViewPass& pass) override {
    pass.disappear(std::move(disappear_));
    content_.unmount(pass);
  }

 private:
  NodeOf<Content> content_;
  ViewAction disappear_;
};

}  // namespace corvane
