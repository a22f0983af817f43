/// The tree of views.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/autoresizing.h"
#include "corvane/platform/views/ui_color.h"
#include "corvane/platform/views/ui_view_animation.h"
#include "corvane/platform/views/ui_view_decoration.h"

namespace corvane {

template <class Value>
struct AnimatedProperty;
class UIGestureRecognizer;
class UIWindow;
class ViewAnimations;

/// A rectangle on screen that holds other views.
///
/// A view keeps its bounds (its own coordinates), its centre (in its superview's coordinates) and a transform about
/// that centre. The frame is derived from the three; writing it writes bounds and centre.
///
/// These, the corner radius and the alpha are the view's own values. While a change of them is animated, what is shown
/// on the way there is the view's presentation. A change outside of an animation's block ends what is on its way.
///
/// Ownership: made by `create`; a superview owns its subviews, and refers back weakly. A view owns its recognizers.
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
  /// the transform turns into the frame's. Where no size becomes such a frame, the view only moves.
  virtual void setFrame(CGRect frame);
  [[nodiscard]] CGRect bounds() const { return bounds_; }
  virtual void setBounds(CGRect bounds);
  [[nodiscard]] CGPoint center() const { return center_; }
  virtual void setCenter(CGPoint center);
  [[nodiscard]] CGAffineTransform transform() const { return transform_; }
  virtual void setTransform(const CGAffineTransform& transform);

  /// Maps this view's own coordinates to its superview's.
  [[nodiscard]] CGAffineTransform transformToSuperview() const;
  /// The same point in another view's coordinates, or in those of the outermost view for null. A view that its
  /// transform leaves nothing of has no coordinates; there, every point is the middle of its bounds.
  [[nodiscard]] CGPoint convertPoint(CGPoint point, const UIView* toView) const;
  [[nodiscard]] CGPoint convertPointFrom(CGPoint point, const UIView* fromView) const;

  /// In the view's own coordinates, so a transform changes how large it looks.
  [[nodiscard]] CGFloat cornerRadius() const { return cornerRadius_; }
  void setCornerRadius(CGFloat radius);
  /// Whether the view cuts off what lies outside of its rounded bounds.
  [[nodiscard]] bool clipsToBounds() const { return clipsToBounds_; }
  void setClipsToBounds(bool clips);
  [[nodiscard]] CGFloat alpha() const { return alpha_; }
  void setAlpha(CGFloat alpha);
  [[nodiscard]] const std::optional<UIColor>& backgroundColor() const CORVANE_LIFETIMEBOUND { return backgroundColor_; }
  void setBackgroundColor(std::optional<UIColor> color);

  /// None until it is set.
  [[nodiscard]] UIViewDecoration decoration() const { return decoration_ ? *decoration_ : UIViewDecoration{}; }
  void setDecoration(const UIViewDecoration& decoration);

  /// The size that the view would like to have where this much is offered, for views that lay others out. It may be
  /// larger than the offer. The default is the size that it has.
  [[nodiscard]] virtual CGSize sizeThatFits(CGSize offered) const;

  [[nodiscard]] UIViewAutoresizing autoresizingMask() const { return autoresizingMask_; }
  void setAutoresizingMask(UIViewAutoresizing mask) { autoresizingMask_ = mask; }
  /// For host apps that lay out by constraints of their own; kept, and without effect here.
  [[nodiscard]] bool translatesAutoresizingMaskIntoConstraints() const {
    return translatesAutoresizingMaskIntoConstraints_;
  }
  void setTranslatesAutoresizingMaskIntoConstraints(bool translates) {
    translatesAutoresizingMaskIntoConstraints_ = translates;
  }
  /// Has `layoutSubviews` called by the next `layoutIfNeeded` of this view or of one around it. New views, and views
  /// whose size or subviews have changed, need it. Backends lay a window out before they show a change of it.
  void setNeedsLayout();
  /// Lays out what needs it in this view and below, the outer views first.
  void layoutIfNeeded();

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
  /// The same at a place among the subviews, counted from the back without the view itself; behind the last place
  /// means in front.
  void insertSubview(std::shared_ptr<UIView> view, std::size_t at);
  void removeFromSuperview();
  /// Does nothing for a view that is no subview of this one.
  void bringSubviewToFront(const std::shared_ptr<UIView>& view);
  [[nodiscard]] bool isDescendantOf(const UIView& view) const;
  /// The window that this view is in, itself included; null outside of any window.
  [[nodiscard]] std::shared_ptr<UIWindow> window() const;

  /// Runs a block at once and animates its changes of bounds, centre, transform, corner radius and alpha, each from
  /// what is shown now. Blocks may be nested; the inner one has its own time. The completion comes when the time is
  /// over, on the run loop and never inside this call. It also comes when nothing was changed or the views have gone.
  static void animate(std::chrono::nanoseconds duration, UIViewAnimations animations,
                      UIViewAnimationCompletion completion = {});
  static void animate(UIViewAnimation animation);
  static void animate(UIViewSpringAnimation animation);
  /// What is to be shown now.
  [[nodiscard]] UIViewPresentation presentation() const;
  /// What is to be shown at a moment of the main run loop's time. All parts of one frame can so be of the same.
  [[nodiscard]] UIViewPresentation presentation(std::chrono::nanoseconds at) const;
  /// Whether a change in this view or below is still on its way, so that another frame is wanted soon.
  [[nodiscard]] bool hasAnimations() const;

  [[nodiscard]] std::span<const std::shared_ptr<UIGestureRecognizer>> gestureRecognizers() const {
    return gestureRecognizers_;
  }
  /// Takes the recognizer away from the view that it is on. It begins with the next touch.
  void addGestureRecognizer(std::shared_ptr<UIGestureRecognizer> recognizer);
  /// A gesture that is going on is cancelled inside this call.
  void removeGestureRecognizer(const std::shared_ptr<UIGestureRecognizer>& recognizer);

  /// The front-most view at or below this one that takes a touch at this point of its own coordinates; null where none
  /// does. What can be seen can be touched. A view that clips takes nothing outside of its rounded bounds; one that
  /// does not lets subviews that stick out take touches there. Must not change the tree.
  [[nodiscard]] virtual std::shared_ptr<UIView> hitTest(CGPoint point);
  /// Whether a point of its own coordinates belongs to this view.
  [[nodiscard]] virtual bool pointInside(CGPoint point) const;

 protected:
  /// Places the subviews; the default leaves them to their autoresizing masks.
  virtual void layoutSubviews();
  /// Called after the view has got another superview, or none.
  virtual void didMoveToSuperview();
  /// Called after the view has got into another window, or out of one.
  virtual void didMoveToWindow();
  /// Called inside a change of the superview's size, with that from before; the default follows the autoresizing mask.
  virtual void superviewDidResize(CGSize from);

  /// The tree or its geometry below this view has changed; the window tells its host.
  void noteChange() const;
  /// What fits this view has changed: it is laid out again, and so is whatever around it places views as they fit.
  void noteFitChange();
  /// Whether the view places its subviews at the sizes that fit them.
  [[nodiscard]] virtual bool placesByFit() const { return false; }

 private:
  template <class Value>
  CORVANE_HIDDEN void setAnimatable(Value UIView::* own, AnimatedProperty<Value> ViewAnimations::* property,
                                    const Value& value);
  void setBoundsValue(const CGRect& bounds);
  [[nodiscard]] bool isOutsideOfClip(CGPoint point) const;
  /// Takes the view out of its superview without telling anybody but the superview's window.
  void detach();
  void didMove(const std::shared_ptr<UIWindow>& from);
  void notifyOfWindow();
  void noteLayoutPending();

  void resizeSubviews(CGSize from);

  CGRect bounds_;
  CGPoint center_;
  CGAffineTransform transform_;
  UIViewAutoresizing autoresizingMask_ = UIViewAutoresizing::none;
  /// None before the mask has been followed; outdated once somebody else has changed the frame.
  std::unique_ptr<AutoresizingOrigin> autoresizingOrigin_;
  CGFloat cornerRadius_ = 0;
  CGFloat alpha_ = 1;
  std::optional<UIColor> backgroundColor_;
  std::unique_ptr<UIViewDecoration> decoration_;
  bool isHidden_ = false;
  bool clipsToBounds_ = false;
  bool translatesAutoresizingMaskIntoConstraints_ = true;
  bool needsLayout_ = true;
  /// Whether this view or one below needs layout.
  bool isLayoutPending_ = true;
  bool isUserInteractionEnabled_ = true;
  std::weak_ptr<UIView> superview_;
  std::vector<std::shared_ptr<UIView>> subviews_;
  std::vector<std::shared_ptr<UIGestureRecognizer>> gestureRecognizers_;
  std::unique_ptr<ViewAnimations> animations_;
};

}  // namespace corvane
