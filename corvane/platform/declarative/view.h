/// View values: what is to be shown, as plain values that are made anew whenever something changes.
///
/// A type is a view when it has a `body()` that returns another view. So is a representable (see
/// ui_view_representable.h), and what the framework brings. It must be copyable. A body is
/// evaluated often and should do nothing but say what is shown. It must not throw.
///
///   struct Greeting {
///     auto body() const { return ZStack{Picture{}, when(shop.isOpen(), [] { return OpenSign{}; })}; }
///   };
///
/// Mounted, each value is a node. A node stays from one evaluation to the next where the value at the same place is
/// of the same type. So does its platform view.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "corvane/platform/declarative/body_observation.h"
#include "corvane/platform/declarative/view_pass.h"

namespace corvane {

/// A mounted view value.
///
/// Besides these functions, `NodeOf<V>` has a constructor and a function `update` that take a value of the type V and
/// the pass. Nodes are never moved.
class ViewNode {
 public:
  ViewNode() = default;
  ViewNode(const ViewNode&) = delete;
  ViewNode& operator=(const ViewNode&) = delete;
  virtual ~ViewNode() = default;

  /// Evaluates the bodies in it that are out of date.
  virtual void refresh(ViewPass& pass) = 0;
  /// Takes away what it shows; called once, before its end.
  virtual void unmount(ViewPass& pass) = 0;
};

/// How the values of a type are mounted; specialised by each kind of view.
template <class V>
class NodeOf;

/// True for the views that the framework brings.
template <class V>
inline constexpr bool isBuiltInView = false;

template <class V>
concept RepresentableView = requires { typename V::UIViewType; };

template <class V>
concept ComposedView = !RepresentableView<V> && !isBuiltInView<V> && requires(const V& view) { view.body(); };

template <class V>
concept View = ComposedView<V> || RepresentableView<V> || isBuiltInView<V>;

template <ComposedView V>
class NodeOf<V> final : public ViewNode {
 public:
  NodeOf(V value, ViewPass& pass) : value_(std::move(value)), observation_(pass.updater()) {
    const BodyObservation::Evaluation evaluation(observation_);
    content_.emplace(value_->body(), pass);
  }
  void update(V value, ViewPass& pass) {
    value_.emplace(std::move(value));  // closures have no assignment
    evaluate(pass);
  }
  void refresh(ViewPass& pass) override {
    if (observation_.isOutdated()) return evaluate(pass);
    content_->refresh(pass);
  }
  void unmount(ViewPass& pass) override { content_->unmount(pass); }

 private:
  using Content = decltype(std::declval<const V&>().body());
  static_assert(View<Content>, "a body returns a view");

  void evaluate(ViewPass& pass) {
    const BodyObservation::Evaluation evaluation(observation_);
    content_->update(value_->body(), pass);
  }

  std::optional<V> value_;
  BodyObservation observation_;
  std::optional<NodeOf<Content>> content_;
};

/// Shows what a callable returns.
template <class Make>
struct Composed {
  Make make;
  auto body() const { return make(); }
};
template <class Make>
Composed(Make) -> Composed<Make>;

/// Holds a node that gives way to one of another kind.
class NodeSlot {
 public:
  [[nodiscard]] bool isEmpty() const { return node_ == nullptr; }
  template <View V>
  [[nodiscard]] NodeOf<V>& as() {
    return static_cast<NodeOf<V>&>(*node_);
  }
  /// Mounts the new one before the old one goes, so that it can take over its platform view.
  template <View V>
  void mount(V value, ViewPass& pass) {
    auto mounted = std::make_unique<NodeOf<V>>(std::move(value), pass);
    clear(pass);
    node_ = std::move(mounted);
  }
  void clear(ViewPass& pass) {
    if (node_ != nullptr) node_->unmount(pass);
    node_ = nullptr;
  }
  void refresh(ViewPass& pass) {
    if (node_ != nullptr) node_->refresh(pass);
  }

 private:
  std::unique_ptr<ViewNode> node_;
};

}  // namespace corvane
