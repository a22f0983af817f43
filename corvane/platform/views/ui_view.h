/// The tree of views.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

class UIWindow;

/// Which of a view's lengths follow when its superview is resized. Lengths of the same axis share the change in
/// proportion to what they are.
enum class UIViewAutoresizing : std::uint8_t {
  none = 0,
  flexibleLeftMargin = 1 << 0,
  flexibleWidth = 1 << 1,
  flexibleRightMargin = 1 << 2,
  flexibleTopMargin = 1 << 3,
  flexibleHeight = 1 << 4,
  flexibleBottomMargin = 1 << 5,
};

constexpr UIViewAutoresizing operator|(UIViewAutoresizing left, UIViewAutoresizing right) noexcept {
  return static_cast<UIViewAutoresizing>(static_cast<unsigned>(left) | static_cast<unsigned>(right));
}
constexpr bool contains(UIViewAutoresizing mask, UIViewAutoresizing part) noexcept {
  return (static_cast<unsigned>(mask) & static_cast<unsigned>(part)) != 0;
}

/// A rectangle on screen that holds other views.
///
/// A view keeps its bounds (its own coordinates), its centre (in its superview's coordinates) and a transform about
/// that centre. The frame is derived from the three; writing it writes bounds and centre.
///
/// Ownership: made by `create`; a superview owns its subviews, and refers back weakly.
/// Threads:   main thread only.
class CORVANE_EXPORT UIView : public std::enable_shared_from_this<UIView> {
 protected:
  /// Lets subclasses make themselves through `std::make_shared` while nobody else can.
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<UIView> create(CGRect frame = {});
  explicit UIView(ConstructionKey key, CGRect frame = {});
  UIView(const UIView&) = delete;
  UIView& operator=(const UIView&) = delete;
  virtual ~UIView();

  /// The smallest rectangle of the superview that holds the transformed view.
  [[nodiscard]] CGRect frame() const;
  /// Moves and sizes the view so that its frame becomes this one. Under a transform the bounds take the size that
  /// the transform turns into the frame's; where no size becomes such a frame, the view only moves.
  virtual void setFrame(CGRect frame);
  [[nodiscard]] CGRect bounds() const { return bounds_; }
  virtual void setBounds(CGRect bounds);
  [[nodiscard]] CGPoint center() const { return center_; }
  virtual void setCenter(CGPoint center);
  [[nodiscard]] CGAffineTransform transform() const { return transform_; }
  virtual void setTransform(const CGAffineTransform& transform);

  /// Maps this view's own coordinates to its superview's.
  [[nodiscard]] CGAffineTransform transformToSuperview() const;

  [[nodiscard]] UIViewAutoresizing autoresizingMask() const { return autoresizingMask_; }
  void setAutoresizingMask(UIViewAutoresizing mask) { autoresizingMask_ = mask; }

  [[nodiscard]] bool isHidden() const { return isHidden_; }
  void setHidden(bool isHidden);

  /// Whether touches reach this view and what is inside it.
  [[nodiscard]] bool isUserInteractionEnabled() const { return isUserInteractionEnabled_; }
  virtual void setUserInteractionEnabled(bool isEnabled);

  [[nodiscard]] std::shared_ptr<UIView> superview() const { return superview_.lock(); }
  /// From the back to the front.
  [[nodiscard]] std::span<const std::shared_ptr<UIView>> subviews() const { return subviews_; }
  /// Takes the view out of its present superview and puts it in front of this view's other subviews. Adding a view
  /// to itself or to something inside it is a mistake of the caller and changes nothing.
  void addSubview(std::shared_ptr<UIView> view);
  void removeFromSuperview();
  /// Does nothing for a view that is no subview of this one.
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  [[nodiscard]] bool isDescendantOf(const UIView& view) const;
  /// The window that this view is in, itself included; null outside of any window.
  [[nodiscard]] std::shared_ptr<UIWindow> window() const;

 protected:
  /// The tree or its geometry below this view has changed; the window tells its host.
  void noteChange() const;

 private:
  void resizeSubviews(CGSize from);
  void autoresize(CGSize superviewFrom, CGSize superviewTo);

  CGRect bounds_;
  CGPoint center_;
  CGAffineTransform transform_;
  UIViewAutoresizing autoresizingMask_ = UIViewAutoresizing::none;
  bool isHidden_ = false;
  bool isUserInteractionEnabled_ = true;
  std::weak_ptr<UIView> superview_;
  std::vector<std::shared_ptr<UIView>> subviews_;
};

}  // namespace corvane
