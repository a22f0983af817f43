#include "demo/gtk/floating_tour.h"

#include <gtk/gtk.h>

#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/web/wk_web_view.h"
#include "demo/gtk/host_tour.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;

// What was done shows on screen by then, and in the page.
constexpr auto pauseBetweenSteps = 300ms;
constexpr auto pauseAfterPicture = 100ms;
constexpr auto betweenMovements = 16ms;
constexpr int movementsOfADrag = 40;
constexpr CGPoint movement{-4, -8};
// Of the page's minimize button, from the upper right corner of the page.
constexpr CGPoint minimizeButton{60, 28};
constexpr auto longestWait = 2s;

std::shared_ptr<WKWebView> pageOf(const UIView& view) {
  for (const auto& subview : view.subviews()) {
    if (auto page = std::dynamic_pointer_cast<WKWebView>(subview)) return page;
  }
  return nullptr;
}

}  // namespace

struct FloatingTour::Step {
  void (FloatingTour::*run)() = nullptr;
  /// The picture that is taken when all is at rest again; null for none.
  const char* picture = nullptr;
};

const std::vector<FloatingTour::Step>& FloatingTour::steps() {
  static const std::vector<Step> steps{
      {&FloatingTour::watchPage, nullptr},
      {&FloatingTour::minimize, "06_minimized"},
      {&FloatingTour::drag, "07_dragged"},
      {&FloatingTour::letGo, "08_snapped"},
      {&FloatingTour::workBeside, "09_over_products"},
      {&FloatingTour::maximize, "10_maximized"},
      {&FloatingTour::askPage, nullptr},
  };
  return steps;
}

FloatingTour::FloatingTour(std::weak_ptr<HostTourStage> stage, FloatingTourProps props)
    : stage_(std::move(stage)), props_(std::move(props)) {}

void FloatingTour::run(std::function<void()> next) {
  next_ = std::move(next);
  std::string reason;
  pointer_ = PointerInput::open(props_.surface->widget(), reason);
  if (pointer_ != nullptr) return runNext();
  std::printf("The floating window is left out of this tour. %s.\n", reason.c_str());
  isComplete_ = true;
  next_();
}

void FloatingTour::goOn() {
  RunLoop::main().schedule(pauseBetweenSteps, whileAlive(weak_from_this(), [](FloatingTour& self) {
                             const char* const picture = steps().at(self.nextStep_ - 1).picture;
                             if (picture != nullptr) self.savePicture(picture);
                             // A picture may need a moment.
                             RunLoop::main().schedule(pauseAfterPicture,
                                                      whileAlive(self.weak_from_this(), &FloatingTour::runNext));
                           }));
}

void FloatingTour::runNext() {
  if (nextStep_ == steps().size()) {
    isComplete_ = true;
    return next_();
  }
  const Step& step = steps().at(nextStep_++);
  (this->*step.run)();
}

void FloatingTour::watchPage() {
  evaluate("window.newLayouts = 0; addEventListener('resize', () => { window.newLayouts += 1; }); 0",
           [](FloatingTour& self, double) { self.goOn(); });
}

void FloatingTour::minimize() {
  const CGRect frame = props_.view->frame();
  pointer_->click({frame.maxX() - minimizeButton.x, frame.minY() + minimizeButton.y});
  measure("minimize");
}

void FloatingTour::drag() {
  const CGRect frame = props_.view->frame();
  pointer_->move({std::round(frame.midX()), std::round(frame.midY())});
  pointer_->press();
  dragOn(movementsOfADrag);
}

void FloatingTour::dragOn(int movements) {
  if (movements == 0) return goOn();
  pointer_->moveBy(movement);
  RunLoop::main().schedule(
      betweenMovements, whileAlive(weak_from_this(), [movements](FloatingTour& self) { self.dragOn(movements - 1); }));
}

void FloatingTour::letGo() {
  pointer_->release();
  measure("snap");
}

void FloatingTour::workBeside() {
  if (const auto stage = stage_.lock()) stage->showProducts();
  // The screen has to be there before it can be clicked on.
  RunLoop::main().schedule(pauseBetweenSteps, whileAlive(weak_from_this(), [](FloatingTour& self) {
                             self.click(self.props_.askButton);
                             self.goOn();
                           }));
}

void FloatingTour::maximize() {
  click(props_.restoreButton);
  measure("maximize");
}

void FloatingTour::askPage() {
  evaluate("window.newLayouts", [](FloatingTour& self, double layouts) {
    std::printf("The page has been laid out anew %g times meanwhile.\n", layouts);
    self.goOn();
  });
}

void FloatingTour::measure(const char* animation) { measureStart(animation, RunLoop::main().now() + longestWait); }

// What is clicked on takes a moment to tell, and pictures from before the animation do not count.
void FloatingTour::measureStart(const char* animation, Time latest) {
  if (props_.surface->window()->isAnimating()) {
    meter_.emplace(props_.surface->widget());
    return measureEnd(animation);
  }
  if (RunLoop::main().now() > latest) {
    std::printf("animation: %s has not begun\n", animation);
    return next_();
  }
  RunLoop::main().schedule(1ms, whileAlive(weak_from_this(), [animation, latest](FloatingTour& self) {
                             self.measureStart(animation, latest);
                           }));
}

void FloatingTour::measureEnd(const char* animation) {
  if (props_.surface->window()->isAnimating()) {
    RunLoop::main().schedule(
        5ms, whileAlive(weak_from_this(), [animation](FloatingTour& self) { self.measureEnd(animation); }));
    return;
  }
  const gtk::FrameMeter::Result result = meter_->result();
  meter_.reset();
  std::printf("animation: %s with %.1f frames a second, the longest gap %.1f ms\n", animation, result.framesPerSecond,
              std::chrono::duration<double, std::milli>(result.longestGap).count());
  goOn();
}

void FloatingTour::evaluate(const char* script, std::function<void(FloatingTour&, double)> use) {
  pageOf(*props_.view)
      ->evaluateJavaScript(script,
                           whileAlive(weak_from_this(), [use = std::move(use)](FloatingTour& self, const auto& result) {
                             use(self, result ? result->number().value_or(NAN) : NAN);
                           }));
}

void FloatingTour::click(GtkWidget* button) {
  const graphene_point_t middle{static_cast<float>(gtk_widget_get_width(button)) / 2,
                                static_cast<float>(gtk_widget_get_height(button)) / 2};
  graphene_point_t place{};
  if (!gtk_widget_compute_point(button, props_.surface->widget(), &middle, &place)) return;
  pointer_->click({std::round(place.x), std::round(place.y)});
}

void FloatingTour::savePicture(const char* name) {
  if (const auto stage = stage_.lock()) stage->savePicture(name);
}

}  // namespace corvane::demo
