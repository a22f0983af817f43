/// Platform views as view values.
#pragma once

#include <concepts>
#include <memory>
#include <type_traits>
#include <utility>

#include "corvane/platform/declarative/view.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// A view value that shows a platform view:
///
/// - `using UIViewType`, the type of the platform view;
/// - `makeUIView() const` returns the platform view, a new one or one that is in use elsewhere, which then comes here.
///   It is called once, when the value is mounted; values that take its place later update the view that it made. The
///   view fills its container and goes on doing so. One that takes no frame when it comes, as an agent view that
///   floats, stays as large as it is; what it does later is its own affair;
/// - `updateUIView(UIViewType&) const` is called after that, and whenever the value is evaluated again;
/// - a static `dismantleUIView(UIViewType&)`, which may be missing, is called when the value goes.
///
/// A view that somebody moves elsewhere meanwhile is no longer framed, and is not taken away in the end.
template <class V>
concept UIViewRepresentable = RepresentableView<V> && std::derived_from<typename V::UIViewType, UIView> &&
                              requires(const V& value, typename V::UIViewType& view) {
                                { value.makeUIView() } -> std::convertible_to<std::shared_ptr<typename V::UIViewType>>;
                                value.updateUIView(view);
                              };

template <RepresentableView V>
class NodeOf<V> final : public ViewNode {
  static_assert(UIViewRepresentable<V>);

 public:
  NodeOf(const V& value, ViewPass& pass) : view_(value.makeUIView()) {
    pass.container().add(view_);
    value.updateUIView(*view_);
  }
  void update(const V& value, ViewPass& pass) {
    pass.container().keep(*view_);
    value.updateUIView(*view_);
  }
  void refresh(ViewPass& pass) override { pass.container().keep(*view_); }
  void unmount(ViewPass& pass) override {
    if constexpr (requires { V::dismantleUIView(*view_); }) V::dismantleUIView(*view_);
    pass.container().remove(view_);
  }

 private:
  std::shared_ptr<typename V::UIViewType> view_;
};

}  // namespace corvane
