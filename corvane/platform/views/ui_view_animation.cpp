// How views are animated, and what they show on the way.
#include "corvane/platform/views/ui_view_animation.h"

#include <utility>

#include "corvane/platform/foundation/platform.h"
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
  assertMainThread();
  animate(
      UIViewAnimation{.duration = duration, .animations = std::move(animations), .completion = std::move(completion)});
}

void UIView::animate(UIViewAnimation animation) {
  assertMainThread();
  const AnimationCurve curve(animation.options);
  AnimationRun::perform(curve, std::move(animation));
}

void UIView::animate(UIViewSpringAnimation animation) {
  assertMainThread();
  const auto curve =
      AnimationCurve::spring(animation.usingSpringWithDamping, animation.initialSpringVelocity, animation.duration);
  AnimationRun::perform(curve, {.duration = animation.duration,
                                .delay = animation.delay,
                                .animations = std::move(animation.animations),
                                .completion = std::move(animation.completion)});
}

UIViewPresentation UIView::presentation() const {
  return presentation(animations_ != nullptr ? ViewAnimations::now() : RunLoop::Time());
}

UIViewPresentation UIView::presentation(std::chrono::nanoseconds at) const {
  if (animations_ == nullptr) return {bounds_, center_, transform_, cornerRadius_, alpha_};
  return {.bounds = shownValue(animations_->bounds, bounds_, at),
          .center = shownValue(animations_->center, center_, at),
          .transform = shownValue(animations_->transform, transform_, at),
          .cornerRadius = shownValue(animations_->cornerRadius, cornerRadius_, at),
          .alpha = shownValue(animations_->alpha, alpha_, at)};
}

bool UIView::hasAnimations() const { return ViewAnimations::isAnyRunning(*this); }

}  // namespace corvane
