// The agent view as a floating window, from the page's wish to the user's finger.
#include "tests/support/floating_window_test.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;

TEST_F(FloatingWindowTest, MinimizingAnimatesTheViewIntoItsCorner) {
  view_->setEventHandler([&](const AgentEvent& event) {
    log_.push_back(encodeJson(event) + (view_->isMinimized() ? " minimized" : ""));
    if (!event.is<AgentEvent::WillMinimize>()) return;
    EXPECT_EQ(view_->superview(), screen_);
    EXPECT_EQ(view_->frame(), (CGRect{{0, 0}, {300, 600}}));
    EXPECT_EQ(MinimizedState::shared().agentView(), nullptr);
  });
  view_->setTranslatesAutoresizingMaskIntoConstraints(false);
  post(*view_, minimizeRequest);
  EXPECT_TRUE(view_->isMinimized()) << "the animation's block runs at once";
  EXPECT_EQ(view_->superview(), window_);
  EXPECT_EQ(MinimizedState::shared().agentView(), view_);
  EXPECT_TRUE(view_->clipsToBounds() && view_->translatesAutoresizingMaskIntoConstraints());
  EXPECT_EQ(view_->transform(), CGAffineTransform::makeScale(0.33, 0.33));
  expectNear(view_->frame(), {{5, 5}, {99, 198}});
  EXPECT_EQ(view_->cornerRadius(), 14.0);
  EXPECT_EQ(view_->presentation().center, (CGPoint{150, 300}));
  loop().advance(125ms);
  const UIViewPresentation halfWay = view_->presentation();
  EXPECT_NEAR(halfWay.center.x, (150 + 54.5) / 2, 0.01);
  EXPECT_NEAR(halfWay.bounds.size.width, 300, 1e-6) << "the page keeps its layout";
  EXPECT_TRUE(view_->gestureRecognizers().empty());

  loop().advance(125ms - 1ns);
  EXPECT_EQ(takeLog(), Log{willMinimize});
  loop().advance(1ns);
  EXPECT_EQ(takeLog(), Log{didMinimize + " minimized"});
  EXPECT_EQ(view_->gestureRecognizers().size(), 1U);
  EXPECT_TRUE(webView().isUserInteractionEnabled());
  EXPECT_FALSE(view_->hasAnimations());
}

TEST_F(FloatingWindowTest, MaximizingPutsEverythingBackAndThenTellsThePage) {
  view_->setTapToMaximize(true);
  view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  minimize();
  expectNear(view_->frame(), {{286, 641}, {99, 198}});
  EXPECT_FALSE(webView().isUserInteractionEnabled());
  EXPECT_EQ(view_->gestureRecognizers().size(), 2U);
  Log restored;
  MinimizedState::shared().registerRestoreAction([&](const auto& view) {
    restored.emplace_back(view == view_ && MinimizedState::shared().agentView() == view ? "restored" : "wrong");
    EXPECT_EQ(view->gestureRecognizers().size(), 0U);
    screen_->addSubview(view);
  });

  view_->maximizeView();
  EXPECT_EQ(takeLog(), Log{willMaximize});
  EXPECT_FALSE(view_->isMinimized() || view_->clipsToBounds());
  EXPECT_EQ(view_->frame(), (CGRect{{0, 0}, {300, 600}}));
  EXPECT_TRUE(view_->transform().isIdentity());
  EXPECT_EQ(view_->cornerRadius(), 0.0);
  EXPECT_EQ(view_->gestureRecognizers().size(), 2U) << "until it has grown";
  EXPECT_EQ(MinimizedState::shared().agentView(), view_);
  loop().advance(250ms - 1ns);
  EXPECT_TRUE(restored.empty() && scripts().empty());
  loop().advance(1ns);
  EXPECT_EQ(restored, Log{"restored"});
  EXPECT_EQ(scripts(), Log{R"(postAction({"eventType":"SDK_MAXIMIZE_AGENT_TOOL"});)"});
  EXPECT_EQ(takeLog(), Log{didMaximize});
  EXPECT_EQ(view_->superview(), screen_);
  EXPECT_EQ(MinimizedState::shared().agentView(), nullptr);
  EXPECT_TRUE(webView().isUserInteractionEnabled());

  minimize();
  MinimizedState::shared().maximize();
  loop().advance(1s);
  EXPECT_EQ(restored.size(), 2U) << "the action stays registered";
}

TEST_F(FloatingWindowTest, AMinimizedViewTakesNoFrameAndNoTransform) {
  minimize();
  const CGRect frame = view_->frame();
  view_->setFrame({{0, 0}, {390, 844}});
  view_->setTransform(CGAffineTransform::makeScale(2, 2));
  EXPECT_EQ(view_->frame(), frame);
  view_->maximizeView();
  view_->setFrame({{1, 2}, {3, 4}});
  EXPECT_EQ(view_->frame(), (CGRect{{1, 2}, {3, 4}}));
  loop().advance(250ms);
}

TEST_F(FloatingWindowTest, StaysInsideItsContainerAndGrowsBackToWhatItWouldHaveBeen) {
  const auto mask = UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight;
  screen_->setAutoresizingMask(mask);
  view_->setAutoresizingMask(mask);
  view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  minimize();
  window_->setFrame({{0, 0}, {300, 500}});
  EXPECT_EQ(view_->center(), (CGPoint{300 - 49.5, 500 - 99}));
  EXPECT_TRUE(view_->hasAnimations());
  loop().advance(500ms);
  touch(TouchPhase::began, {250, 400});
  touch(TouchPhase::moved, {230, 400});
  const CGPoint held = view_->center();
  window_->setFrame({{0, 0}, {200, 100}});
  EXPECT_EQ(view_->center(), held) << "the finger has it";
  touch(TouchPhase::ended, {230, 400});
  EXPECT_EQ(view_->center().x, 200 - 49.5);
  loop().advance(500ms);
  touch(TouchPhase::began, {150, 50});
  touch(TouchPhase::moved, {130, 50});
  window_->setFrame({{0, 0}, {120, 100}});
  touch(TouchPhase::cancelled, {130, 50});
  EXPECT_EQ(view_->center().x, 120 - 49.5) << "no finger brings it to rest";
  window_->setFrame({{0, 0}, {20, 100}});
  window_->setFrame({{0, 0}, {200, 100}});
  EXPECT_EQ(view_->center().x, 200 - 49.5) << "it was wider than its window";
  touch(TouchPhase::began, {150, 50});
  window_->sendTouch({.identifier = 2, .phase = TouchPhase::began, .location = {160, 50}});
  window_->setFrame({{0, 0}, {120, 100}});
  EXPECT_EQ(view_->center().x, 120 - 49.5) << "two fingers do not drag it";
  touch(TouchPhase::ended, {150, 50});
  window_->sendTouch({.identifier = 2, .phase = TouchPhase::ended, .location = {160, 50}});
  MinimizedState::shared().moveTo(screen_);
  screen_->setFrame({{0, 0}, {200, 300}});
  EXPECT_EQ(view_->center().x, 200 - 49.5) << "what it was moved into holds it";
  screen_->setFrame({{0, 0}, {200, 100}});
  view_->maximizeView();
  EXPECT_EQ(view_->frame(), (CGRect{{0, 0}, {110, 0}})) << "no length is negative";
  screen_->addSubview(view_);
  window_->setFrame({{0, 0}, {390, 844}});
  loop().advance(500ms);
}

TEST_F(FloatingWindowTest, RequestsThatDoNotFitTheStateEndWithoutAWord) {
  view_->maximizeView();
  post(*view_, minimizeRequest);
  post(*view_, minimizeRequest);
  loop().advance(1s);
  EXPECT_EQ(takeLog(), (Log{willMinimize, didMinimize}));
  post(*view_, minimizeRequest);
  EXPECT_EQ(loop().pendingTaskCount(), 0U);
  view_->maximizeView();
  view_->maximizeView();
  loop().advance(1s);
  EXPECT_EQ(takeLog(), (Log{willMaximize, didMaximize}));

  view_->removeFromSuperview();
  post(*view_, minimizeRequest);
  EXPECT_EQ(loop().pendingTaskCount(), 0U);
  EXPECT_TRUE(takeLog().empty()) << "there is nothing to float in";
}

TEST_F(FloatingWindowTest, TheContainerIsTheOneGivenElseTheWindowElseTheSuperview) {
  const auto panel = UIView::create({{10, 10}, {200, 300}});
  window_->addSubview(panel);
  view_->setMinimizedSuperview(panel);
  view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  minimize();
  EXPECT_EQ(view_->superview(), panel);
  expectNear(view_->frame(), {{96, 97}, {99, 198}});
  view_->maximizeView();
  loop().advance(1s);

  view_->setMinimizedSuperview(nullptr);
  const auto alone = UIView::create({{0, 0}, {500, 500}});
  const auto front = UIView::create();
  alone->addSubview(view_);
  alone->addSubview(front);
  minimize();
  EXPECT_EQ(view_->superview(), alone);
  EXPECT_EQ(alone->subviews().back(), front) << "not added again";
  view_->maximizeView();
  loop().advance(1s);
}

TEST_F(FloatingWindowTest, ADragMovesTheCentreByTheFinger) {
  minimize();
  const CGPoint before = view_->center();
  touch(TouchPhase::began, {50, 100});
  touch(TouchPhase::moved, {62, 100});
  EXPECT_EQ(view_->center(), before) << "the drag begins here";
  touch(TouchPhase::moved, {102, 90});
  EXPECT_EQ(view_->presentation().center, (CGPoint{before.x + 40, before.y - 10})) << "without animation";
  touch(TouchPhase::moved, {107, 93});
  touch(TouchPhase::cancelled, {107, 93});
  EXPECT_EQ(view_->center(), (CGPoint{before.x + 45, before.y - 7})) << "and stays there";
  EXPECT_FALSE(view_->hasAnimations());
  EXPECT_TRUE(takeLog().empty());
}

TEST_F(FloatingWindowTest, LettingGoSnapsToTheSideWithoutOvershooting) {
  minimize();
  drag({{50, 100}, {70, 100}, {260, -200}});
  const CGPoint released{view_->center().x, view_->center().y};
  EXPECT_EQ(released, (CGPoint{390 - 49.5, 99})) << "the target, at once";
  CGPoint last = view_->presentation().center;
  for (int step = 0; step < 100; ++step) {
    loop().advance(5ms);
    const CGPoint shown = view_->presentation().center;
    EXPECT_GE(shown.x, last.x);
    EXPECT_LE(shown.x, 390 - 49.5);
    EXPECT_GE(shown.y, last.y);
    EXPECT_LE(shown.y, 99);
    last = shown;
  }
  EXPECT_EQ(last, view_->center());
  EXPECT_FALSE(view_->hasAnimations());

  drag({{350, 100}, {330, 100}, {100, 900}});
  loop().advance(500ms);
  EXPECT_EQ(view_->center(), (CGPoint{49.5, 844 - 99}));
}

TEST_F(FloatingWindowTest, ANewContainerCountsForTheDragThatGoesOn) {
  minimize();
  const auto panel = UIView::create({{100, 100}, {200, 400}});
  panel->setTransform(CGAffineTransform::makeScale(2, 2));
  window_->insertSubview(panel, 0);
  view_->setMinimizedSuperview(panel);
  EXPECT_EQ(view_->superview(), window_);
  touch(TouchPhase::began, {50, 100});
  touch(TouchPhase::moved, {70, 100});
  const CGPoint before = view_->center();
  touch(TouchPhase::moved, {90, 100});
  EXPECT_EQ(view_->center(), (CGPoint{before.x + 10, before.y})) << "the finger in the container's coordinates";
  touch(TouchPhase::moved, {390, 800});
  touch(TouchPhase::ended, {390, 800});
  EXPECT_EQ(view_->center(), (CGPoint{400 - 49.5, 454})) << "it is the panel's frame that counts";
  loop().advance(500ms);
}

TEST_F(FloatingWindowTest, OnlyItsOwnDragMovesAViewThatFloats) {
  minimize();
  const auto pan = view_->gestureRecognizers()[0];
  screen_->addGestureRecognizer(pan);
  CGPoint before = view_->center();
  drag({{300, 700}, {300, 720}, {200, 720}});
  EXPECT_EQ(view_->center(), before) << "its recognizer was given to another view";
  view_->addGestureRecognizer(pan);
  view_->maximizeView();
  before = view_->center();
  drag({{100, 100}, {120, 100}, {260, 100}});
  EXPECT_EQ(view_->center(), before) << "it grows";
  loop().advance(500ms);
  EXPECT_EQ(view_->frame(), (CGRect{{0, 0}, {300, 600}}));
}

TEST_F(FloatingWindowTest, HandlersMayPrepareTheStepThatComes) {
  const auto panel = UIView::create({{0, 0}, {100, 100}});
  view_->setEventHandler([&](const AgentEvent& event) {
    log_.push_back(encodeJson(event));
    if (event.is<AgentEvent::WillMinimize>()) {
      post(*view_, minimizeRequest);
      view_->setFrame({{10, 20}, {200, 400}});
      view_->setMinimizedOrigin(MinimizedOrigin::custom({50, 60}));
      view_->setMinimizedSize(CGSize{100, 10});
      view_->setMinimizedSuperview(panel);
    } else if (event.is<AgentEvent::DidMinimize>()) {
      EXPECT_EQ(view_->gestureRecognizers().size(), 2U);
      EXPECT_FALSE(webView().isUserInteractionEnabled());
    } else if (event.is<AgentEvent::WillMaximize>()) {
      view_->maximizeView();
      EXPECT_TRUE(view_->isMinimized() && view_->clipsToBounds());
    }
  });
  post(*view_, minimizeRequest);
  expectNear(view_->frame(), {{50, 60}, {100, 30}});
  EXPECT_EQ(view_->superview(), window_) << "the container was known before";
  EXPECT_EQ(view_->minimizedSize(), (CGSize{100, 30}));
  view_->setTapToMaximize(true);
  loop().advance(1s);
  MinimizedState::shared().registerRestoreAction([&](const auto&) { log_.emplace_back("restored"); });
  view_->maximizeView();
  loop().advance(1s);
  EXPECT_EQ(view_->frame(), (CGRect{{10, 20}, {200, 400}}));
  EXPECT_EQ(takeLog(), (Log{willMinimize, didMinimize, willMaximize, "restored", didMaximize}));
  view_->setMinimizedSize(std::nullopt);
  EXPECT_EQ(view_->minimizedSize(), std::nullopt);
}

TEST_F(FloatingWindowTest, OnlyAViewThatIsToBeTappedGrowsByATap) {
  minimize();
  tap({50, 100});
  EXPECT_TRUE(view_->isMinimized());
  view_->setTapToMaximize(true);
  tap({50, 100});
  EXPECT_TRUE(view_->isMinimized()) << "it counts from the next time on";
  view_->maximizeView();
  loop().advance(1s);
  minimize();
  tap({390, 844});
  EXPECT_TRUE(view_->isMinimized()) << "beside it";
  view_->setTapToMaximize(false);
  tap({50, 100});
  EXPECT_EQ(takeLog(), Log{willMaximize});
  tap({50, 100});
  loop().advance(1s);
  EXPECT_EQ(takeLog(), Log{didMaximize});
  EXPECT_TRUE(view_->gestureRecognizers().empty());
}

TEST_F(FloatingWindowTest, GrowingBackBeforeItHasShrunkEndsAtFullSize) {
  post(*view_, minimizeRequest);
  loop().advance(100ms);
  view_->maximizeView();
  loop().advance(50ms);
  post(*view_, minimizeRequest);
  EXPECT_EQ(takeLog(), (Log{willMinimize, willMaximize, willMinimize}));
  int restorations = 0;
  MinimizedState::shared().registerRestoreAction([&](const auto&) { ++restorations; });
  loop().advance(1s);
  EXPECT_EQ(restorations, 1) << "the growing that was overtaken ends as always";
  EXPECT_EQ(MinimizedState::shared().agentView(), nullptr);
  EXPECT_EQ(view_->gestureRecognizers().size(), 1U);
  EXPECT_EQ(takeLog(), (Log{didMinimize, didMaximize, didMinimize}));
  EXPECT_TRUE(view_->isMinimized());
  expectNear(view_->frame(), {{5, 5}, {99, 198}});
}

TEST_F(FloatingWindowTest, AViewReleasedWhileItMovesIsNotKeptAlive) {
  post(*view_, minimizeRequest);
  const std::weak_ptr<VelnorAgentView> weak = view_;
  view_.reset();
  MinimizedState::shared().remove();
  EXPECT_TRUE(weak.expired());

  view_ = VelnorAgentView::create(Region::eu(), "o", false);
  window_->addSubview(view_);
  watch(*view_);
  loop().advance(1s);
  EXPECT_EQ(takeLog(), Log{willMinimize});
  minimize();
  view_->maximizeView();
  MinimizedState::shared().remove();
  view_.reset();
  loop().advance(1s);
  EXPECT_EQ(takeLog(), Log{willMaximize});
}

TEST_F(FloatingWindowTest, HandlersMayTakeEverythingAway) {
  view_->setMinimizedSuperview(UIView::create({{0, 0}, {100, 100}}));
  view_->setEventHandler([&](const AgentEvent& event) {
    log_.push_back(encodeJson(event));
    view_->setMinimizedSuperview(nullptr);
    view_->removeFromSuperview();
  });
  post(*view_, minimizeRequest);
  expectNear(view_->frame(), {{5, 5}, {99, 198}});
  EXPECT_EQ(view_->superview(), nullptr) << "its container has gone meanwhile";
  loop().advance(1s);
  view_->setEventHandler([&](const AgentEvent&) {
    MinimizedState::shared().remove();
    view_.reset();
  });
  view_->maximizeView();
  EXPECT_EQ(view_, nullptr);
  loop().advance(1s);
}

}  // namespace
}  // namespace corvane
