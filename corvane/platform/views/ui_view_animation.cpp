// How views are animated, and what they show on the way.
#include "corvane/platform/views/ui_view_animation.h"

#include <utility>

#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/views/view_animations.h"

namespace corvane {

CGAffineTransform UIViewPresentation::transformToSuperview() const {
  return CGAffineTransform::makeTranslation(-bounds.midX(), -bounds.midY())
      .concatenated(transform)
      .concatenated(CGAffineTransform::makeTranslation(center.x, center.y));
}

void UIView::animate(std::chrono::nanoseconds duration, UIViewAnimations animations,
                     UIViewAnimationCompletion completion) {
  animate(
      UIViewAnimation{.duration = duration, .animations = std::move(animations), .completion = std::move(completion)});
}

void UIView::animate(UIViewAnimation animation) {
  const AnimationCurve curve(animation.options);
  AnimationRun::perform(curve, std::move(animation));
}

void UIView::animate(UIViewSpringAnimation animation) {
  const auto curve =
      AnimationCurve::spring(animation.usingSpringWithDamping, animation.initialSpringVelocity, animation.duration);
  AnimationRun::perform(curve, {.duration = animation.duration,
                                .delay = animation.delay,
                                .animations = std::move(animation.animations),
                                .completion = std::move(animation.completion)});
}

UIViewPresentation UIView::presentation() const {
  if (animations_ == nullptr) return {bounds_, center_, transform_, cornerRadius_, alpha_};
  const RunLoop::Time now = RunLoop::main().now();
  return {.bounds = shownValue(animations_->bounds, bounds_, now),
          .center = shownValue(animations_->center, center_, now),
          .transform = shownValue(animations_->transform, transform_, now),
          .cornerRadius = shownValue(animations_->cornerRadius, cornerRadius_, now),
          .alpha = shownValue(animations_->alpha, alpha_, now)};
}

bool UIView::hasAnimations() const { return ViewAnimations::isAnyRunning(*this); }

}  // namespace corvane
