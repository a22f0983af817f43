#include "demo/gtk/declarative_tour.h"

#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/web/wk_web_view.h"
#include "demo/gtk/picture.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;

// What was done shows on screen by then, and in the page.
constexpr auto pause = 400ms;
constexpr auto longestTour = 60s;
// What is tapped on.
constexpr CGPoint toCart{220, 160};
constexpr CGPoint backToCall{60, 812};

void pressMinimizeInPage() {
  const auto view = VelnorAgentContext::shared().agentView();
  if (view == nullptr) return;
  for (const auto& subview : view->subviews()) {
    const auto page = std::dynamic_pointer_cast<WKWebView>(subview);
    if (page == nullptr) continue;
    page->evaluateJavaScript("document.querySelector('[data-action=minimize]').click(); 0",
                             [](const EvaluationResult&) {});
  }
}

}  // namespace

void DeclarativeTour::begin() {
  after(longestTour, [](DeclarativeTour& self) { g_main_loop_quit(self.loop_); });
}

void DeclarativeTour::follow(const AgentEvent& event) {
  if (event.is<AgentEvent::DidLoad>()) ++loads_;
  if (event.is<AgentEvent::ProductUpdateInCart>() && !hasBegunToFloat_) {
    hasBegunToFloat_ = true;
    after(pause, [](DeclarativeTour& self) {
      self.savePicture("declarative_1_call");
      pressMinimizeInPage();
    });
  }
  if (event.is<AgentEvent::DidMinimize>()) {
    after(pause, [](DeclarativeTour& self) { self.tap(toCart); });
    after(2 * pause, [](DeclarativeTour& self) {
      self.savePicture("declarative_2_home");
      self.tap(backToCall);
    });
  }
  if (event.is<AgentEvent::DidMaximize>()) {
    after(pause, [](DeclarativeTour& self) {
      self.savePicture("declarative_3_back");
      self.isComplete_ = self.isBack();
    });
    after(2 * pause, [](DeclarativeTour& self) { g_main_loop_quit(self.loop_); });
  }
}

void DeclarativeTour::after(std::chrono::milliseconds delay, void (*step)(DeclarativeTour& self)) {
  RunLoop::main().schedule(delay, whileAlive(weak_from_this(), step));
}

void DeclarativeTour::tap(CGPoint place) {
  for (const TouchPhase phase : {TouchPhase::began, TouchPhase::ended}) {
    surface_->window()->sendTouch({.identifier = 1, .phase = phase, .location = place});
  }
}

void DeclarativeTour::savePicture(const char* name) { demo::savePicture(surface_->widget(), screenshotFolder_, name); }

bool DeclarativeTour::isBack() const {
  const auto view = VelnorAgentContext::shared().agentView();
  // While it floats, and when nobody has taken it back, the window itself has it.
  return view != nullptr && !view->isMinimized() && view->superview() != nullptr &&
         view->superview() != surface_->window() && loads_ == 1;
}

}  // namespace corvane::demo
