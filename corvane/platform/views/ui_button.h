/// A text that can be tapped.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "corvane/platform/views/ui_label.h"

namespace corvane {

/// A button with a title on a rounded ground.
///
/// Ownership and threads as every view. The action may do anything, also remove the button; it must not throw.
class CORVANE_EXPORT UIButton final : public UIView {
 public:
  static std::shared_ptr<UIButton> create(std::string title = {}, std::function<void()> action = {});
  explicit UIButton(ConstructionKey key, std::string title);

  [[nodiscard]] const std::string& title() const CORVANE_LIFETIMEBOUND { return label_->text(); }
  void setTitle(std::string title) { label_->setText(std::move(title)); }
  void setTitleColor(UIColor color);
  /// What a tap does from now on; may be empty.
  void setAction(std::function<void()> action);
  [[nodiscard]] bool isEnabled() const { return isEnabled_; }
  /// A button that is not is seen as such, and takes the taps on it for nothing.
  void setEnabled(bool isEnabled);

  [[nodiscard]] CGSize sizeThatFits(CGSize offered) const override;

 protected:
  void layoutSubviews() override;

 private:
  std::shared_ptr<UILabel> label_;
  std::function<void()> action_;
  bool isEnabled_ = true;
};

}  // namespace corvane
