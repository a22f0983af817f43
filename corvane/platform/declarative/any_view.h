/// A view of any type.
#pragma once

#include <concepts>
#include <memory>
#include <typeinfo>
#include <utility>

#include "corvane/platform/declarative/view.h"

namespace corvane {

/// Holds a view value of a type that need not be known. Mounted, a value of another type takes the place of the
/// previous one with everything in it.
class AnyView {
 public:
  template <View V>
    requires(!std::same_as<V, AnyView>)
  AnyView(V view) : box_(std::make_shared<BoxOf<V>>(std::move(view))) {}

 private:
  friend class NodeOf<AnyView>;

  struct Box {
    Box() = default;
    Box(const Box&) = delete;
    Box& operator=(const Box&) = delete;
    virtual ~Box() = default;
    [[nodiscard]] virtual const std::type_info& type() const = 0;
    /// Mounts the value, or updates the node of an earlier one of the same type. The last user may have it emptied.
    virtual void mount(NodeSlot& slot, ViewPass& pass, bool isLast) = 0;
    virtual void update(NodeSlot& slot, ViewPass& pass, bool isLast) = 0;
  };

  template <View V>
  struct BoxOf final : Box {
    explicit BoxOf(V view) : view(std::move(view)) {}
    [[nodiscard]] const std::type_info& type() const override { return typeid(V); }
    void mount(NodeSlot& slot, ViewPass& pass, bool isLast) override {
      slot.mount(isLast ? std::move(view) : view, pass);
    }
    void update(NodeSlot& slot, ViewPass& pass, bool isLast) override {
      slot.as<V>().update(isLast ? std::move(view) : view, pass);
    }
    V view;
  };

  std::shared_ptr<Box> box_;
};

template <>
inline constexpr bool isBuiltInView<AnyView> = true;

template <>
class NodeOf<AnyView> final : public ViewNode {
 public:
  NodeOf(AnyView&& view, ViewPass& pass) { update(std::move(view), pass); }
  void update(AnyView&& view, ViewPass& pass) {
    AnyView::Box& box = *view.box_;
    const bool isLast = view.box_.use_count() == 1;
    const std::type_info* const previous = std::exchange(type_, &box.type());
    if (previous != nullptr && *previous == *type_) return box.update(slot_, pass, isLast);
    box.mount(slot_, pass, isLast);
  }
  void refresh(ViewPass& pass) override { slot_.refresh(pass); }
  void unmount(ViewPass& pass) override { slot_.clear(pass); }

 private:
  const std::type_info* type_ = nullptr;
  NodeSlot slot_;
};

}  // namespace corvane
