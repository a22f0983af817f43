/// Texts, pictures and buttons as view values.
///
///   VStack({.spacing = 4}, Text("Oxford shirt").font({.size = 17, .isBold = true}), Button("Add", add))
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "corvane/platform/declarative/ui_view_representable.h"
#include "corvane/platform/views/ui_button.h"
#include "corvane/platform/views/ui_image_view.h"
#include "corvane/platform/views/ui_label.h"
#include "corvane/platform/views/ui_stack_view.h"

namespace corvane {

/// A text in the toolkit's own typeface, as wide as it needs and as may be.
class Text {
 public:
  using UIViewType = UILabel;

  explicit Text(std::string text) : text_(std::move(text)) {}
  [[nodiscard]] Text font(UIFont font) && { return font_ = font, std::move(*this); }
  [[nodiscard]] Text color(UIColor color) && { return color_ = color, std::move(*this); }
  [[nodiscard]] Text alignment(TextAlignment alignment) && { return alignment_ = alignment, std::move(*this); }

  [[nodiscard]] std::shared_ptr<UILabel> makeUIView() const { return UILabel::create(); }
  void updateUIView(UILabel& label) const {
    label.setText(text_);
    label.setFont(font_);
    label.setColor(color_);
    label.setAlignment(alignment_);
  }

 private:
  std::string text_;
  UIFont font_;
  UIColor color_;
  TextAlignment alignment_ = TextAlignment::leading;
};

/// A picture from a file, in a box of this size in points.
class Image {
 public:
  using UIViewType = UIImageView;

  Image(std::string file, CGSize size) : file_(std::move(file)), size_(size) {}

  [[nodiscard]] std::shared_ptr<UIImageView> makeUIView() const { return UIImageView::create(file_, size_); }
  void updateUIView(UIImageView& view) const {
    view.setFile(file_);
    view.setPreferredSize(size_);
  }

 private:
  std::string file_;
  CGSize size_;
};

/// A button that calls the newest action it was given.
class Button {
 public:
  using UIViewType = UIButton;

  Button(std::string title, ViewAction action) : title_(std::move(title)), action_(std::move(action)) {}
  [[nodiscard]] Button enabled(bool isEnabled) && { return isEnabled_ = isEnabled, std::move(*this); }
  [[nodiscard]] Button colors(UIColor ground, UIColor title) && {
    return ground_ = ground, titleColor_ = title, std::move(*this);
  }

  [[nodiscard]] std::shared_ptr<UIButton> makeUIView() const { return UIButton::create(); }
  void updateUIView(UIButton& button) const {
    button.setTitle(title_);
    button.setAction(action_);
    button.setEnabled(isEnabled_);
    button.setTitleColor(titleColor_);
    if (button.backgroundColor() != ground_) button.setBackgroundColor(ground_);
  }

 private:
  std::string title_;
  ViewAction action_;
  bool isEnabled_ = true;
  UIColor ground_{.red = 1, .green = 1, .blue = 1};
  UIColor titleColor_{.red = 0.11, .green = 0.15, .blue = 0.19};
};

/// Takes the room in a stack that the others leave.
struct Spacer {
  using UIViewType = UISpacerView;
  [[nodiscard]] static std::shared_ptr<UISpacerView> makeUIView() { return UISpacerView::create(); }
  static void updateUIView(UISpacerView& /*view*/) {}
};

}  // namespace corvane
