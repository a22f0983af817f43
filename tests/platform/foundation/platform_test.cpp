#include "corvane/platform/foundation/platform.h"

#include <thread>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/views/ui_application.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

TEST(PlatformDeathTest, WithoutABackendTheFirstUseEndsTheProgramWithASentence) {
  const std::string sentence = "corvane: no backend is installed";
  EXPECT_DEATH(RunLoop::main(), sentence);
  EXPECT_DEATH(static_cast<void>(VelnorAgentView::create(Region::eu(), "o", false)), sentence);
  EXPECT_DEATH(UIView::animate({}, [] {}), sentence);
  EXPECT_DEATH(UIApplication::shared(), sentence);
}

class PlatformTest : public HeadlessTest {};
using PlatformThreadDeathTest = PlatformTest;

TEST_F(PlatformTest, ASecondOneIsRefusedAndTheFirstStays) {
  EXPECT_EQ(headless::Backend::install().error(), PlatformInstallation::refusal());
  EXPECT_EQ(&RunLoop::main(), &loop());
}

TEST_F(PlatformThreadDeathTest, ADoorThatIsUsedOnAnotherThreadNamesItselfAndTheWayOut) {
#ifdef NDEBUG
  GTEST_SKIP() << "threads are checked in debug builds";
#endif
  const auto view = VelnorAgentView::create(Region::eu(), "o", false);
  const auto onAnotherThread = [](auto work) { std::thread(work).join(); };
  const std::string remedy = ".*another thread.*RunLoop::main\\(\\)\\.post";
  EXPECT_DEATH(onAnotherThread([&] { view->setAlpha(0); }), "UIView::setAlpha" + remedy);
  EXPECT_DEATH(onAnotherThread([&] { view->getCartStatus(nullptr); }), "AgentOperations::getCartStatus" + remedy);
  EXPECT_DEATH(onAnotherThread([&] { loop().schedule({}, [] {}); }), "RunLoop::schedule" + remedy);
  onAnotherThread([&] { RunLoop::main().post([this] { log_.emplace_back("posted"); }); });
  loop().runUntilIdle();
  EXPECT_EQ(takeLog(), Log{"posted"});
}

TEST(Platform, ViewsThatOutliveItAreHarmlessAndAnotherOneMayFollow) {
  auto backend = headless::Backend::install().value();
  const auto window = UIWindow::create({{0, 0}, {100, 100}});
  const auto view = UIView::create({{0, 0}, {10, 10}});
  window->addSubview(view);
  UIView::animate(std::chrono::seconds(1), [&] { view->setAlpha(0); });
  backend.reset();
  EXPECT_FALSE(window->hasAnimations());
  EXPECT_EQ(view->presentation().alpha, 0);
  EXPECT_EQ(window->sendTouch({.identifier = 1, .phase = TouchPhase::began, .location = {5, 5}}),
            TouchOutcome::ignored);
  backend = headless::Backend::install().value();
  UIView::animate(std::chrono::seconds(1), [&] { view->setAlpha(1); });
  EXPECT_TRUE(window->hasAnimations());
  backend->runLoop().advance(std::chrono::seconds(1));
  EXPECT_FALSE(window->hasAnimations());
}

}  // namespace
}  // namespace corvane
