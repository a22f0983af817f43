#include "demo/headless/floating_transcript.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "corvane/corvane.h"
#include "corvane/platform/headless/headless_backend.h"
#include "corvane/simulation/simulated_agent_tool.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;

class Transcript {
 public:
  Transcript() {
    view_->setFrame(window_->bounds());
    view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
    view_->setEventHandler([this](const AgentEvent& event) { say("event " + encodeJson(event)); });
    window_->addSubview(view_);
    view_->loadBooking("booking-7");
    backend_->runLoop().runUntilIdle();
  }

  bool show() {
    page_->postText(R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
    follow(250ms, 5);
    bool isRight = comesToRest({256.3, 560.48});

    touch(TouchPhase::began, {320, 700});
    // The first movement makes it a drag, and is no part of its way.
    for (const CGPoint finger : {CGPoint{310, 690}, CGPoint{230, 590}, CGPoint{150, 490}}) {
      touch(TouchPhase::moved, finger);
      sayPlace();
    }
    touch(TouchPhase::ended, {150, 490});
    follow(500ms, 5);
    isRight = comesToRest({0, 360.48}) && isRight;

    MinimizedState::shared().maximize();
    follow(250ms, 5);
    return comesToRest({0, 0}) && isRight;
  }

 private:
  void touch(TouchPhase phase, CGPoint location) {
    std::string line = phase == TouchPhase::began ? "a finger comes to " : "the finger moves to ";
    if (phase == TouchPhase::ended) line = "the finger leaves at ";
    say(line + text(location));
    window_->sendTouch({.identifier = 1, .phase = phase, .location = location});
  }

  void follow(std::chrono::milliseconds time, int pictures) {
    for (int picture = 0; picture < pictures; ++picture) {
      backend_->runLoop().advance(time / pictures);
      sayPlace();
    }
  }

  bool comesToRest(CGPoint corner) {
    const CGPoint actual = view_->frame().origin;
    const bool isThere = std::hypot(actual.x - corner.x, actual.y - corner.y) < 1e-6 && !view_->hasAnimations();
    if (!isThere) say("EXPECTED to rest at " + text(corner));
    return isThere;
  }

  void sayPlace() const {
    const UIViewPresentation shown = view_->presentation();
    const CGAffineTransform onWindow = shown.transformToSuperview();
    const CGPoint corner = onWindow.apply(shown.bounds.origin);
    const CGPoint end = onWindow.apply({shown.bounds.maxX(), shown.bounds.maxY()});
    say("shown at " + text(corner) + ", " + whole(end.x - corner.x) + " x " + whole(end.y - corner.y) + " large");
  }

  static std::string whole(CGFloat length) { return std::to_string(std::lround(length)); }
  static std::string text(CGPoint point) { return "(" + whole(point.x) + ", " + whole(point.y) + ")"; }

  void say(const std::string& line) const {
    std::printf("%7.3f s  %s\n", std::chrono::duration<double>(backend_->runLoop().now()).count(), line.c_str());
  }

  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {390, 844}});
  std::shared_ptr<VelnorAgentView> view_ =
      VelnorAgentView::create(Region::custom("https://agent-tool.example.com"), "shop-42", /*enableSSO=*/false);
  std::shared_ptr<simulation::SimulatedAgentTool> page_ = simulation::SimulatedAgentTool::attach(view_);
};

}  // namespace

bool showFloatingWindow() { return Transcript().show(); }

}  // namespace corvane::demo
