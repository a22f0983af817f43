#include "corvane/platform/declarative/box.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"

namespace corvane {

namespace {

/// As large in a stack as its own frame, or else as what is in it.
class BoxView final : public UIView {
 public:
  explicit BoxView(ConstructionKey key) : UIView(key) {}
  static std::shared_ptr<BoxView> create() { return std::make_shared<BoxView>(ConstructionKey{}); }

  void setOwnSize(std::optional<CGSize> size) {
    if (std::exchange(ownSize_, size) != size) noteFitChange();
  }
  [[nodiscard]] CGSize sizeThatFits(CGSize offered) const override {
    if (ownSize_) return *ownSize_;
    CGSize size;
    for (const auto& view : subviews()) {
      const CGSize inner = view->sizeThatFits(offered);
      size = {std::max(size.width, inner.width), std::max(size.height, inner.height)};
    }
    return size;
  }

 private:
  std::optional<CGSize> ownSize_;
};

}  // namespace

struct BoxPart::TapTarget {
  ViewAction action;
  std::shared_ptr<UITapGestureRecognizer> recognizer;
};

BoxPart::BoxPart(BoxStyle style, ViewPass& pass) : inside_(BoxView::create()) {
  pass.container().add(inside_.view());
  apply(std::move(style));
}

BoxPart::~BoxPart() = default;

void BoxPart::update(BoxStyle style, ViewPass& pass) {
  keep(pass);
  apply(std::move(style));
}

void BoxPart::keep(ViewPass& pass) { pass.container().keep(*inside_.view()); }
void BoxPart::remove(ViewPass& pass) { pass.container().remove(inside_.view()); }

void BoxPart::apply(BoxStyle style) {
  UIView& view = *inside_.view();
  // Written only when it changes, since its container may have resized it meanwhile.
  if (style.frame && style.frame != frame_) {
    view.setAutoresizingMask(style.autoresizingMask);
    view.setFrame(*style.frame);
  }
  frame_ = style.frame;
  static_cast<BoxView&>(view).setOwnSize(frame_ ? std::optional(frame_->size) : std::nullopt);
  if (view.cornerRadius() != style.cornerRadius) view.setCornerRadius(style.cornerRadius);
  if (view.decoration() != style.decoration) view.setDecoration(style.decoration);
  if (view.backgroundColor() != style.backgroundColor) view.setBackgroundColor(style.backgroundColor);
  if (style.onTap && tapTarget_ == nullptr) {
    tapTarget_ = std::make_shared<TapTarget>();
    tapTarget_->recognizer = UITapGestureRecognizer::create(
        whileAlive(std::weak_ptr(tapTarget_), [](TapTarget& target, const UITapGestureRecognizer&) {
          // A copy, since it may lead to an update of this box.
          if (const ViewAction action = target.action) action();
        }));
    view.addGestureRecognizer(tapTarget_->recognizer);
  }
  if (tapTarget_ != nullptr) tapTarget_->action = std::move(style.onTap);
}

}  // namespace corvane
