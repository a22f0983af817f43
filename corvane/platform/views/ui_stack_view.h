/// Views in a row or in a column.
#pragma once

#include <memory>
#include <vector>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

enum class StackAxis { horizontal, vertical };

/// Where the views of a stack stand across its axis.
enum class StackAlignment { leading, center, trailing, fill };

struct StackStyle {
  CGFloat spacing = 8;
  /// Between the views and all four sides.
  CGFloat margin = 0;
  StackAlignment alignment = StackAlignment::leading;
  bool operator==(const StackStyle&) const = default;
};

/// Takes the room in a stack that the others leave.
class CORVANE_EXPORT UISpacerView final : public UIView {
 public:
  static std::shared_ptr<UISpacerView> create();
  explicit UISpacerView(ConstructionKey key) : UIView(key) {}
  [[nodiscard]] CGSize sizeThatFits(CGSize /*offered*/) const override { return {}; }
  [[nodiscard]] bool pointInside(CGPoint /*point*/) const override { return false; }
};

/// Lays its subviews out one after the other, each at the size that fits it. Spacers share what is left. Where there is
/// too little room, the largest give way until all fit. Touches between the views go to what is below.
///
/// Ownership, threads and failure as every view.
class CORVANE_EXPORT UIStackView final : public UIView {
 public:
  static std::shared_ptr<UIStackView> create(StackAxis axis, StackStyle style = {});
  UIStackView(ConstructionKey key, StackAxis axis, StackStyle style);

  void setStyle(StackStyle style);

  [[nodiscard]] CGSize sizeThatFits(CGSize offered) const override;
  [[nodiscard]] bool pointInside(CGPoint point) const override;

 protected:
  void layoutSubviews() override;
  [[nodiscard]] bool placesByFit() const override { return true; }

 private:
  /// A length along the axis and one across it.
  struct Extent {
    CGFloat along = 0;
    CGFloat across = 0;
  };
  struct Item {
    std::shared_ptr<UIView> view;
    bool isSpacer = false;
    Extent extent{};
  };

  [[nodiscard]] Extent extentOf(CGSize size) const;
  [[nodiscard]] CGSize sizeOf(Extent extent) const;
  /// What is to be placed, with its size; room is that inside the margins.
  [[nodiscard]] std::vector<Item> fitted(Extent room) const;

  StackAxis axis_;
  StackStyle style_;
};

}  // namespace corvane
