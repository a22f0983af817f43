// A device that is turned while the call floats, under a compositor that can turn its output.
#include <gio/gio.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>

#include "tests/contract/real_engine_platform.h"

namespace corvane::contract {
namespace {

constexpr Colour pageColour{0, 128, 0};

class TurnedOutput : public testing::TestWithParam<RealEngineMaker> {
 protected:
  void SetUp() override {
    if (std::getenv("SWAYSOCK") == nullptr) GTEST_SKIP() << "There is no output that can be turned";
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
  }

  void turn(const char* transform, CGSize size) {
    const std::string command = std::string("swaymsg -q output HEADLESS-1 transform ") + transform;
    ASSERT_TRUE(g_spawn_command_line_sync(command.c_str(), nullptr, nullptr, nullptr, nullptr));
    ASSERT_TRUE(platform_->runUntil([&] { return platform_->window()->bounds().size == size; }));
    ASSERT_TRUE(platform_->runUntil([&] { return !platform_->window()->isAnimating(); }));
  }
  void expectAtRestOnTheRight(const UIView& view) {
    const CGRect frame = view.frame();
    const CGSize size = platform_->window()->bounds().size;
    EXPECT_TRUE(frame.minX() >= 0 && frame.minY() >= 0 && frame.maxX() <= size.width && frame.maxY() <= size.height)
        << frame.minX() << ' ' << frame.minY() << ' ' << frame.size.width << ' ' << frame.size.height;
    EXPECT_GT(view.center().x, size.width / 2);
    const auto x = static_cast<int>(view.center().x);
    const auto y = static_cast<int>(view.center().y);
    EXPECT_TRUE(platform_->runUntil([&] { return platform_->takePicture()(x, y) == pageColour; }));
  }

  std::unique_ptr<RealEnginePlatform> platform_;
};

TEST_P(TurnedOutput, AFloatingCallStaysAtItsSideAndGrowsBackToTheWhole) {
  constexpr CGSize upright{390, 844};
  constexpr CGSize lying{844, 390};
  ASSERT_TRUE(platform_->runUntil([&] { return platform_->window()->bounds().size == upright; }));
  const auto view = VelnorAgentView::create(Region::custom(platform_->page("seen.html")), "shop", false);
  view->setFrame(platform_->window()->bounds());
  view->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  view->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  platform_->show(view);
  view->loadBooking("b");
  ASSERT_TRUE(platform_->runUntil([&] { return view->isLoaded(); }));
  platform_->pagePostsValue(*view, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
  ASSERT_TRUE(platform_->runUntil([&] { return view->isMinimized() && !platform_->window()->isAnimating(); }));
  expectAtRestOnTheRight(*view);
  ASSERT_NO_FATAL_FAILURE(turn("90", lying));
  expectAtRestOnTheRight(*view);
  ASSERT_NO_FATAL_FAILURE(turn("normal", upright));
  expectAtRestOnTheRight(*view);
  ASSERT_NO_FATAL_FAILURE(turn("270", lying));
  view->maximizeView();
  ASSERT_TRUE(platform_->runUntil([&] { return !view->isMinimized() && !platform_->window()->isAnimating(); }));
  EXPECT_EQ(view->frame(), platform_->window()->bounds());
  EXPECT_TRUE(platform_->runUntil([&] {
    const auto size = platform_->evaluate(*view, "innerWidth + ' ' + innerHeight");
    return size && size->string() == "844 390";
  }));
  view->removeFromSuperview();
}

INSTANTIATE_TEST_SUITE_P(, TurnedOutput, testing::ValuesIn(realEngines()),
                         [](const auto& engine) { return engine.param.name; });

}  // namespace
}  // namespace corvane::contract
