/// A text on screen.
#pragma once

#include <string>

#include "corvane/platform/views/text_measurer.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Shows a text in the toolkit's own typeface, its lines broken at the view's width, from the top on. What does not fit
/// into the view is cut off. Touches go to what the label is in.
///
/// Ownership, threads and failure as every view. Text that is not UTF-8 is shown as far as it is.
class CORVANE_EXPORT UILabel final : public UIView {
 public:
  static std::shared_ptr<UILabel> create(std::string text = {});
  explicit UILabel(ConstructionKey key, std::string text);

  [[nodiscard]] const std::string& text() const CORVANE_LIFETIMEBOUND { return text_; }
  void setText(std::string text);
  [[nodiscard]] UIFont font() const { return font_; }
  void setFont(UIFont font);
  [[nodiscard]] UIColor color() const { return color_; }
  void setColor(UIColor color);
  [[nodiscard]] TextAlignment alignment() const { return alignment_; }
  void setAlignment(TextAlignment alignment);

  [[nodiscard]] CGSize sizeThatFits(CGSize offered) const override;
  [[nodiscard]] bool pointInside(CGPoint point) const override;

 private:
  template <class Value>
  void set(Value& own, Value value);

  std::string text_;
  UIFont font_;
  UIColor color_;
  TextAlignment alignment_ = TextAlignment::leading;
};

}  // namespace corvane
