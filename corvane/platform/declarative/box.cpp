#include "corvane/platform/declarative/box.h"

#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"

namespace corvane {

struct BoxPart::TapTarget {
  ViewAction action;
  std::shared_ptr<UITapGestureRecognizer> recognizer;
};

BoxPart::BoxPart(BoxStyle style, ViewPass& pass) : inside_(UIView::create()) {
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
