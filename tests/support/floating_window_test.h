/// An agent view in a phone's window, whose page asks to be minimized and whose user has a finger.
#pragma once

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/minimized_state.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {

inline void PrintTo(const CGRect& rect, std::ostream* out) {
  *out << "(" << rect.minX() << ", " << rect.minY() << ", " << rect.size.width << " x " << rect.size.height << ")";
}
inline void PrintTo(const CGPoint& point, std::ostream* out) { *out << "(" << point.x << ", " << point.y << ")"; }

inline void expectNear(CGRect actual, CGRect expected) {
  EXPECT_NEAR(actual.minX(), expected.minX(), 1e-9);
  EXPECT_NEAR(actual.minY(), expected.minY(), 1e-9);
  EXPECT_NEAR(actual.size.width, expected.size.width, 1e-9);
  EXPECT_NEAR(actual.size.height, expected.size.height, 1e-9);
}

class FloatingWindowTest : public HeadlessTest {
 protected:
  FloatingWindowTest() {
    view_->setFrame({{0, 0}, {300, 600}});
    screen_->addSubview(view_);
    window_->addSubview(screen_);
    watch(*view_);
  }

  void watch(VelnorAgentView& view) {
    view.setEventHandler([this](const AgentEvent& event) { log_.push_back(encodeJson(event)); });
  }
  /// Minimizes the view and lets it come to rest.
  void minimize() {
    post(*view_, minimizeRequest);
    loop().advance(std::chrono::milliseconds(250));
    log_.clear();
  }
  TouchOutcome touch(TouchPhase phase, CGPoint location) {
    return window_->sendTouch({.identifier = 1, .phase = phase, .location = location});
  }
  void tap(CGPoint location) {
    touch(TouchPhase::began, location);
    touch(TouchPhase::ended, location);
  }
  /// Drags with one finger by way of the points; the first movement only begins the drag.
  void drag(const std::vector<CGPoint>& way) {
    touch(TouchPhase::began, way.front());
    for (const CGPoint& point : way) touch(TouchPhase::moved, point);
    touch(TouchPhase::ended, way.back());
  }
  WKWebView& webView() { return *AgentViewAccess::parts(*view_).webView; }
  /// The scripts that were run in the page.
  Log scripts() {
    Log scripts;
    const auto& engine = *headless::HeadlessWebEngine::of(*view_);
    for (auto& evaluated : engine.recordsOf<headless::HeadlessWebEngine::ScriptEvaluated>()) {
      scripts.push_back(std::move(evaluated.script));
    }
    return scripts;
  }

  static inline const std::string willMinimize = R"({"willMinimize":{}})";
  static inline const std::string didMinimize = R"({"didMinimize":{}})";
  static inline const std::string willMaximize = R"({"willMaximize":{}})";
  static inline const std::string didMaximize = R"({"didMaximize":{}})";

  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {390, 844}});
  std::shared_ptr<UIView> screen_ = UIView::create({{0, 0}, {390, 844}});
  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "o", false);
};

}  // namespace corvane
