#include "corvane/platform/views/ui_button.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"

namespace corvane {

namespace {

constexpr CGSize margin{14, 10};
/// What a finger can hit.
constexpr CGFloat smallestHeight = 40;
constexpr CGFloat roundness = 10;
constexpr UIColor ground{.red = 1, .green = 1, .blue = 1};
constexpr UIViewDecoration edge{.borderWidth = 1, .borderColor = {.red = 0.79, .green = 0.77, .blue = 0.73}};
constexpr CGFloat faintness = 0.45;

}  // namespace

std::shared_ptr<UIButton> UIButton::create(std::string title, std::function<void()> action) {
  auto button = std::make_shared<UIButton>(ConstructionKey{}, std::move(title));
  button->setBackgroundColor(ground);
  button->setCornerRadius(roundness);
  button->setDecoration(edge);
  button->addSubview(button->label_);
  button->setAction(std::move(action));
  button->addGestureRecognizer(UITapGestureRecognizer::create(
      whileAlive(std::weak_ptr(button), [](UIButton& self, const UITapGestureRecognizer&) {
        // A copy, since it may be replaced meanwhile.
        if (const auto act = self.action_; act && self.isEnabled_) act();
      })));
  return button;
}

UIButton::UIButton(ConstructionKey key, std::string title) : UIView(key), label_(UILabel::create(std::move(title))) {
  label_->setAlignment(TextAlignment::center);
}

void UIButton::setTitleColor(UIColor color) { label_->setColor(color); }

void UIButton::setAction(std::function<void()> action) {
  assertMainThread();
  action_ = std::move(action);
}

void UIButton::setEnabled(bool isEnabled) {
  if (std::exchange(isEnabled_, isEnabled) == isEnabled) return;
  label_->setAlpha(isEnabled ? 1 : faintness);
}

CGSize UIButton::sizeThatFits(CGSize offered) const {
  const CGSize text = label_->sizeThatFits({offered.width - 2 * margin.width, offered.height});
  return {text.width + 2 * margin.width, std::max(smallestHeight, text.height + 2 * margin.height)};
}

void UIButton::layoutSubviews() {
  const CGSize own = bounds().size;
  const CGFloat width = std::max(0.0, own.width - 2 * margin.width);
  const CGFloat height = label_->sizeThatFits({width, own.height}).height;
  label_->setFrame({{margin.width, (own.height - height) / 2}, {width, height}});
}

}  // namespace corvane
