/// Views in a rectangle of their own.
#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "corvane/export.h"
#include "corvane/platform/declarative/view.h"
#include "corvane/platform/declarative/view_modifier.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/ui_color.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Where a box is, how it looks, and what a tap on it does.
struct BoxStyle {
  /// In the container; none to fill it, or in a stack to be as large as the content.
  std::optional<CGRect> frame{};
  /// What follows when the container is resized, for a box with a frame.
  UIViewAutoresizing autoresizingMask = UIViewAutoresizing::none;
  std::optional<UIColor> backgroundColor{};
  /// Of the ground and of the edge; the content is not cut off.
  CGFloat cornerRadius = 0;
  UIViewDecoration decoration{};
  /// Called when the box is tapped; may be empty.
  ViewAction onTap{};
};

template <View Content>
struct BoxedView {
  Content content;
  BoxStyle style;
};
template <class Content>
inline constexpr bool isBuiltInView<BoxedView<Content>> = true;

class BoxModifier : public ViewModifier {
 public:
  explicit BoxModifier(BoxStyle style) : style_(std::move(style)) {}
  template <View Content>
  [[nodiscard]] BoxedView<Content> body(Content content) && {
    return {std::move(content), std::move(style_)};
  }

 private:
  BoxStyle style_;
};

/// Puts the view into a platform view of its own.
[[nodiscard]] inline BoxModifier box(BoxStyle style) { return BoxModifier(std::move(style)); }

/// The platform view of a box.
///
/// Ownership: part of a mounted node.
class CORVANE_EXPORT BoxPart {
 public:
  BoxPart(BoxStyle style, ViewPass& pass);
  BoxPart(const BoxPart&) = delete;
  BoxPart& operator=(const BoxPart&) = delete;
  ~BoxPart();

  void update(BoxStyle style, ViewPass& pass);
  void keep(ViewPass& pass);
  void remove(ViewPass& pass);
  /// Where the content goes.
  [[nodiscard]] ViewContainer& inside() { return inside_; }

 private:
  struct TapTarget;

  void apply(BoxStyle style);

  ViewContainer inside_;
  std::optional<CGRect> frame_;
  std::shared_ptr<TapTarget> tapTarget_;
};

template <class Content>
class NodeOf<BoxedView<Content>> final : public ViewNode {
 public:
  NodeOf(BoxedView<Content> value, ViewPass& pass) : part_(std::move(value.style), pass) {
    const ViewPass::Inside inside(pass, part_.inside());
    content_.emplace(std::move(value.content), pass);
  }
  void update(BoxedView<Content> value, ViewPass& pass) {
    part_.update(std::move(value.style), pass);
    const ViewPass::Inside inside(pass, part_.inside());
    content_->update(std::move(value.content), pass);
  }
  void refresh(ViewPass& pass) override {
    part_.keep(pass);
    const ViewPass::Inside inside(pass, part_.inside());
    content_->refresh(pass);
  }
  void unmount(ViewPass& pass) override {
    {
      const ViewPass::Inside inside(pass, part_.inside());
      content_->unmount(pass);
    }
    part_.remove(pass);
  }

 private:
  BoxPart part_;
  std::optional<NodeOf<Content>> content_;
};

}  // namespace corvane
