#include "corvane/agent_view/minimized_state.h"

#include "corvane/minimized/scene_key_window.h"
#include "corvane/platform/views/ui_application.h"
#include "corvane/platform/views/ui_window_scene.h"
#include "tests/support/floating_window_test.h"
#include "tests/support/outcome_text.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using MinimizedStateTest = FloatingWindowTest;

TEST_F(MinimizedStateTest, WithoutAViewEverythingDoesNothing) {
  MinimizedState& state = MinimizedState::shared();
  EXPECT_FALSE(state.isMinimized() || state.agentView());
  state.bringToFront();
  state.moveTo(window_);
  state.remove();
  state.maximize();
  state.getCartStatus([&](const auto&) { log_.emplace_back("called"); });
  state.removeProductInCart("A", [&](const auto&) { log_.emplace_back("called"); });
  loop().advance(10s);
  EXPECT_TRUE(log_.empty());
  EXPECT_EQ(screen_->subviews().size(), 1U);
}

TEST_F(MinimizedStateTest, TheViewOutlivesItsScreenAndCanBeMovedAndRemoved) {
  const MinimizedState& state = MinimizedState::shared();
  minimize();
  const std::weak_ptr<VelnorAgentView> weak = view_;
  view_.reset();
  screen_->removeFromSuperview();
  const auto next = UIView::create({{0, 0}, {390, 844}});
  window_->addSubview(next);
  state.bringToFront();
  EXPECT_EQ(window_->subviews().back(), weak.lock());
  const CGRect frame = weak.lock()->frame();
  state.moveTo(next);
  EXPECT_EQ(weak.lock()->superview(), next);
  const auto other = UIView::create();
  next->addSubview(other);
  state.moveTo(next);
  EXPECT_EQ(next->subviews().back(), other) << "it is there already";
  EXPECT_EQ(weak.lock()->frame(), frame);
  EXPECT_TRUE(state.isMinimized());
  state.remove();
  EXPECT_FALSE(state.isMinimized());
  EXPECT_TRUE(weak.expired());
  EXPECT_EQ(next->subviews().size(), 1U);
}

TEST_F(MinimizedStateTest, OperationsAreThoseOfTheViewThatItHolds) {
  MinimizedState& state = MinimizedState::shared();
  minimize();
  const auto note = [&](const auto& outcome) { log_.push_back(outcomeText(outcome)); };
  state.isProductInCart("A", note);
  EXPECT_EQ(takeLog(), Log{"error noActiveCall"});
  post(*view_, callIsRunning);
  takeLog();
  state.removeProductInCall("A", note);
  loop().advance(5s);
  EXPECT_EQ(takeLog(), Log{"error requestTimeout"});
  EXPECT_EQ(scripts().size(), 1U);
}

class OtherScene : public UIScene {};

TEST_F(MinimizedStateTest, TheKeyWindowIsThatOfTheFirstWindowScene) {
  UIApplication& application = UIApplication::shared();
  EXPECT_EQ(sceneKeyWindow(), nullptr);
  const std::vector<std::shared_ptr<UIScene>> scenes{std::make_shared<OtherScene>(), UIWindowScene::create(),
                                                     UIWindowScene::create()};
  for (const auto& scene : scenes) application.connect(scene);
  const auto hidden = UIWindow::create();
  hidden->setWindowScene(std::dynamic_pointer_cast<UIWindowScene>(scenes[2]));
  hidden->makeKey();
  window_->setWindowScene(std::dynamic_pointer_cast<UIWindowScene>(scenes[1]));
  EXPECT_EQ(sceneKeyWindow(), nullptr) << "others are not looked at";
  const auto second = UIWindow::create();
  second->setWindowScene(std::dynamic_pointer_cast<UIWindowScene>(scenes[1]));
  second->makeKey();
  EXPECT_EQ(sceneKeyWindow(), second);
  const auto first = std::dynamic_pointer_cast<UIWindowScene>(scenes[1]);
  window_->makeKey();
  EXPECT_EQ(sceneKeyWindow(), window_);
  EXPECT_FALSE(second->isKeyWindow());
  hidden->setWindowScene(first);
  EXPECT_FALSE(hidden->isKeyWindow()) << "the scene has one";
  EXPECT_EQ(hidden->windowScene(), first);
  EXPECT_EQ(first->windows(), (std::vector{window_, second, hidden}));
  second->setWindowScene(nullptr);
  EXPECT_EQ(first->windows(), (std::vector{window_, hidden}));
  application.connect(scenes[1]);
  EXPECT_EQ(application.connectedScenes().size(), 3U) << "it is there already";
  for (const auto& scene : scenes) application.disconnect(scene);
  EXPECT_TRUE(application.connectedScenes().empty());
}

}  // namespace
}  // namespace corvane
