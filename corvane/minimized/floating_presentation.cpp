#include "corvane/minimized/floating_presentation.h"

#include <chrono>
#include <utility>

#include "corvane/minimized/minimized_store.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/views/autoresizing.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane {

namespace {

using namespace std::chrono_literals;

constexpr auto resizeDuration = 250ms;
constexpr auto snapDuration = 500ms;

}  // namespace

std::shared_ptr<FloatingPresentation> FloatingPresentation::create(
    std::weak_ptr<FloatingPresentationDelegate> delegate) {
  auto presentation = std::make_shared<FloatingPresentation>(ConstructionKey{}, std::move(delegate));
  presentation->makeRecognizers();
  return presentation;
}

void FloatingPresentation::makeRecognizers() {
  panGestureRecognizer_ = UIPanGestureRecognizer::create(whileAlive(
      weak_from_this(), [](FloatingPresentation& self, const UIPanGestureRecognizer& sender) { self.drag(sender); }));
  tapGestureRecognizer_ = UITapGestureRecognizer::create(
      whileAlive(weak_from_this(), [](FloatingPresentation& self, const UITapGestureRecognizer&) {
        if (const auto delegate = self.delegate_.lock()) delegate->maximizeRequested();
      }));
}

std::shared_ptr<UIView> FloatingPresentation::container(const UIView& view) const {
  if (settings.superview != nullptr) return settings.superview;
  if (auto window = view.window()) return window;
  return view.superview();
}

bool FloatingPresentation::announce(FloatingPresentationDelegate& delegate, const AgentEvent& event) {
  if (isAnnouncing_) return false;
  isAnnouncing_ = true;
  delegate.emitEvent(event);
  isAnnouncing_ = false;
  return true;
}

CGRect FloatingPresentation::OriginalPlace::frameNow(UIViewAutoresizing mask) const {
  const auto container = superview.lock();
  return container == nullptr ? frame : autoresizedFrame(frame, mask, superviewSize, container->bounds().size);
}

void FloatingPresentation::minimize(std::function<void()> completion) {
  const auto delegate = delegate_.lock();
  if (delegate == nullptr || isMinimized_) return;
  UIView& view = delegate->view();
  // Handlers may take the container away.
  const std::weak_ptr<UIView> weakContainer = container(view);
  if (weakContainer.expired()) return;
  if (!announce(*delegate, AgentEvent::WillMinimize{})) return;

  const auto container = weakContainer.lock();
  const auto superview = view.superview();
  original_ = {view.frame(), superview, superview == nullptr ? CGSize{} : superview->bounds().size};
  if (container != nullptr && view.superview() != container) container->addSubview(view.shared_from_this());
  view.setTranslatesAutoresizingMaskIntoConstraints(true);
  MinimizedStore::shared().setAgentView(delegate->agentView());
  const MinimizedShape shape = minimizedShape(original_.frame, settings.size);
  const CGRect frame{minimizedPosition(settings.origin, shape.size,
                                       container == nullptr ? std::nullopt : std::optional(container->frame().size)),
                     shape.size};
  view.setClipsToBounds(true);
  UIView::animate(
      resizeDuration,
      [this, &view, &shape, &frame] {
        // Once the view is minimized it takes no frame and no transform any more.
        view.setTransform(shape.transform);
        view.setFrame(frame);
        isMinimized_ = true;
        view.setCornerRadius(minimizedCornerRadius);
        view.layoutIfNeeded();
      },
      afterwards(&FloatingPresentation::didShrink, std::move(completion)));
}

void FloatingPresentation::didShrink(FloatingPresentationDelegate& delegate, const std::function<void()>& completion) {
  UIView& view = delegate.view();
  view.addGestureRecognizer(panGestureRecognizer_);
  if (settings.tapToMaximize) {
    view.addGestureRecognizer(tapGestureRecognizer_);
    delegate.setPageInteractionEnabled(false);
  }
  completion();
}

void FloatingPresentation::maximize(std::function<void()> completion) {
  const auto delegate = delegate_.lock();
  if (delegate == nullptr || !isMinimized_) return;
  if (!announce(*delegate, AgentEvent::WillMaximize{})) return;
  UIView& view = delegate->view();
  isMinimized_ = false;
  view.setClipsToBounds(false);
  UIView::animate(
      resizeDuration,
      [this, &view] {
        view.setTransform({});
        view.setFrame(original_.frameNow(view.autoresizingMask()));
        view.setCornerRadius(0);
        view.layoutIfNeeded();
      },
      afterwards(&FloatingPresentation::didGrow, std::move(completion)));
}

void FloatingPresentation::didGrow(FloatingPresentationDelegate& delegate, const std::function<void()>& completion) {
  UIView& view = delegate.view();
  view.removeGestureRecognizer(panGestureRecognizer_);
  view.removeGestureRecognizer(tapGestureRecognizer_);
  delegate.setPageInteractionEnabled(true);
  MinimizedStore& store = MinimizedStore::shared();
  const auto agentView = delegate.agentView();
  // The action may register another one.
  const auto restore = store.restoreAction();
  if (restore && store.agentView() == agentView) restore(agentView);
  store.setAgentView(nullptr);
  completion();
}

void FloatingPresentation::drag(const UIPanGestureRecognizer& sender) {
  const auto delegate = delegate_.lock();
  if (delegate == nullptr || !isMinimized_) return;
  UIView& view = delegate->view();
  const auto container = this->container(view);
  if (container == nullptr || sender.view().get() != &view) return;
  const CGPoint location = sender.location(container.get());
  switch (sender.state()) {
    using enum UIGestureRecognizerState;
    case began:
      wasResizedWhileDragged_ = false;
      prevDragLocation_ = location;
      return;
    case changed:
      view.setCenter(
          {view.center().x + (location.x - prevDragLocation_.x), view.center().y + (location.y - prevDragLocation_.y)});
      prevDragLocation_ = location;
      return;
    case ended: {
      const CGSize size = container->frame().size;
      return snap(view, snapTarget(view.frame(), view.center().y, size), size.width);
    }
    case cancelled:
      // It may lie outside by now, where no finger reaches it.
      if (const auto superview = view.superview(); superview != nullptr && wasResizedWhileDragged_) {
        settle(view, superview->bounds().size);
      }
      return;
    case possible:
    case failed:
      return;
  }
}

bool FloatingPresentation::isDragged(const UIView& view) const {
  const auto state = panGestureRecognizer_->state();
  const bool isGoingOn = state == UIGestureRecognizerState::began || state == UIGestureRecognizerState::changed;
  return isGoingOn && panGestureRecognizer_->view().get() == &view;
}

void FloatingPresentation::superviewDidResize(CGSize from) {
  const auto delegate = delegate_.lock();
  if (delegate == nullptr || !isMinimized_) return;
  UIView& view = delegate->view();
  wasResizedWhileDragged_ = isDragged(view);
  if (!wasResizedWhileDragged_) settle(view, from);
}

void FloatingPresentation::settle(UIView& view, CGSize sidesOf) {
  const auto superview = view.superview();
  if (superview == nullptr) return;
  const CGSize size = superview->bounds().size;
  SnapTarget target = snapTarget(view.frame(), view.center().y, size);
  const bool isAtRest = rest_ && rest_->center == view.center();
  target.side = isAtRest ? rest_->side : snapTarget(view.frame(), view.center().y, sidesOf).side;
  snap(view, target, size.width);
}

void FloatingPresentation::snap(UIView& view, const SnapTarget& target, CGFloat containerWidth) {
  UIView::animate({.duration = snapDuration,
                   .usingSpringWithDamping = 1.0,
                   .initialSpringVelocity = 1.0,
                   .options = UIViewAnimationOptions::curveEaseIn,
                   .animations = [&] {
                     view.setCenter(
                         {snappedCenterX(target.side, view.frame().size.width, containerWidth), view.center().y});
                     view.setCenter({view.center().x, target.centerY});
                   }});
  rest_ = {target.side, view.center()};
}

std::move_only_function<void(bool)> FloatingPresentation::afterwards(Step step, std::function<void()> completion) {
  return whileAlive(weak_from_this(),
                    [step, completion = std::move(completion)](FloatingPresentation& self, bool /*finished*/) {
                      if (const auto delegate = self.delegate_.lock()) (self.*step)(*delegate, completion);
                    });
}

}  // namespace corvane
