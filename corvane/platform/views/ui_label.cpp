#include "corvane/platform/views/ui_label.h"

#include <utility>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

std::shared_ptr<UILabel> UILabel::create(std::string text) {
  return std::make_shared<UILabel>(ConstructionKey{}, std::move(text));
}

UILabel::UILabel(ConstructionKey key, std::string text) : UIView(key), text_(std::move(text)) {}

template <class Value>
void UILabel::set(Value& own, Value value) {
  assertMainThread();
  if (own == value) return;
  own = std::move(value);
  noteFitChange();
}

void UILabel::setText(std::string text) { set(text_, std::move(text)); }
void UILabel::setFont(UIFont font) { set(font_, font); }
void UILabel::setColor(UIColor color) { set(color_, color); }
void UILabel::setAlignment(TextAlignment alignment) { set(alignment_, alignment); }

CGSize UILabel::sizeThatFits(CGSize offered) const { return measureText(text_, font_, offered.width); }

bool UILabel::pointInside(CGPoint /*point*/) const { return false; }

}  // namespace corvane
