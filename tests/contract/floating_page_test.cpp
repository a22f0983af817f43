// A mouse over a page in a small window.
#include "tests/contract/floating_page.h"

#include <limits>

namespace corvane::contract {
namespace {

using namespace std::chrono_literals;

TEST_P(FloatingPage, ClicksReachThePageAndDragsTheWindow) {
  expectClickInPage({200, 700});
  shrink();
  expectClickInPage({309, 674});
  ASSERT_NO_FATAL_FAILURE(dragBy({309, 674}, {-120, -300}));
  // That the page saw nothing of the drag shows here, too.
  expectClickInPage(box_->center());
  grow();
  expectClickInPage({309, 674});
}

TEST_P(FloatingPage, ATapIsTheViewsWhereThePageTakesNoTouches) {
  int taps = 0;
  const auto tap = UITapGestureRecognizer::create([&](UITapGestureRecognizer&) { ++taps; });
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  box_->addGestureRecognizer(tap);
  page_->setUserInteractionEnabled(false);
  pointer_->click({309, 674});
  ASSERT_TRUE(platform_->runUntil([&] { return taps == 1; }));
  ASSERT_NO_FATAL_FAILURE(dragBy({309, 674}, {-100, 0}));
  EXPECT_EQ(taps, 1);

  page_->setUserInteractionEnabled(true);
  pointer_->click(box_->center());
  ASSERT_TRUE(platform_->runUntil([&] { return taps == 2; }));
  box_->removeGestureRecognizer(tap);
  expectClickInPage(box_->center());
}

TEST_P(FloatingPage, WhatTurnsOutToBeNoTapReachesThePageAsAWhole) {
  int taps = 0;
  page_->addGestureRecognizer(UITapGestureRecognizer::create([&](UITapGestureRecognizer&) { ++taps; }));
  pointer_->move({100, 100});
  pointer_->press();
  pointer_->moveInSteps({100, 300});
  pointer_->release();
  ASSERT_TRUE(waitForPage("seen.some((event) => event.startsWith('mouseup 100 300'))")) << seen();
  EXPECT_EQ(evaluate("seen.slice(0, 2).join()")->string(), "pointerdown 100 100,mousedown 100 100");
  EXPECT_EQ(evaluate("seen.filter((event) => /down|up/.test(event)).length")->integer(), 4) << seen();
  EXPECT_EQ(taps, 0);
}

TEST_P(FloatingPage, WidgetsOfTheHostAppWorkUnderTheWindowAndBesideIt) {
  int beneath = 0;
  int beside = 0;
  platform_->addHostButton({{200, 450}, {190, 300}}, [&] { ++beneath; });
  platform_->addHostButton({{20, 100}, {100, 50}}, [&] { ++beside; });
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  pointer_->click({70, 125});
  ASSERT_TRUE(platform_->runUntil([&] { return beside == 1; }));
  // In the box of the window, but outside of its round corner.
  pointer_->click({corner.x + 2, corner.y + 2});
  ASSERT_TRUE(platform_->runUntil([&] { return beneath == 1; }));
  expectClickInPage({corner.x + 10, corner.y + 10});

  // The mouse rests where it is.
  const auto click = [&] {
    ASSERT_NO_FATAL_FAILURE(show());
    pointer_->press();
    pointer_->release();
  };
  box_->setUserInteractionEnabled(false);
  ASSERT_NO_FATAL_FAILURE(click());
  ASSERT_TRUE(platform_->runUntil([&] { return beneath == 2; }));
  box_->setUserInteractionEnabled(true);
  ASSERT_NO_FATAL_FAILURE(click());
  EXPECT_TRUE(waitForPage("seen.some((event) => event.startsWith('click'))")) << seen();
  EXPECT_EQ(beside, 1);
}

TEST_P(FloatingPage, AnimationsMoveThePictureAndNotThePage) {
  for (const bool isShrinking : {true, false}) {
    const auto frames = platform_->countFrames();
    ASSERT_NO_FATAL_FAILURE(animate(250ms, [&] { isShrinking ? shrink() : grow(); }));
    EXPECT_GE(frames(), 3);
    // The last picture shows the end, and asks for no more.
    ASSERT_TRUE(platform_->runUntil([&] {
      const auto colourAt = platform_->takePicture();
      const auto isPage = [&](int x, int y) { return colourAt(x, y) == pageColour; };
      const bool isInRoundCorner = isPage(int(corner.x) + 2, int(corner.y) + 2);
      return isPage(260, 510) && isPage(240, 510) != isShrinking && isInRoundCorner != isShrinking;
    }));
  }
  EXPECT_EQ(seen(), "") << "a page that is only shown smaller is not laid out anew";
  EXPECT_EQ(evaluate("[innerWidth, innerHeight].join()")->string(), "390,844");
  ASSERT_NO_FATAL_FAILURE(animate(250ms, [&] { box_->setFrame({{50, 100}, {200, 400}}); }));
  ASSERT_TRUE(waitForPage("innerWidth === 200 && innerHeight === 400 && seen.length > 0"));
  EXPECT_EQ(seen(), "resize") << "a new size comes once, whatever is shown on the way";
}

TEST_P(FloatingPage, OtherButtonsAndManyClicksReachThePageInOrder) {
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  pointer_->move({309, 674});
  pointer_->press();
  pointer_->press(2);
  pointer_->release(2);
  pointer_->move({250, 600});
  pointer_->release();
  ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::ended; }));
  expectClickInPage(box_->center());
  const std::string click = "pointerdown,mousedown,pointerup,mouseup,click";
  for (int count = 0; count < 2; ++count) {
    pointer_->press();
    pointer_->release();
  }
  ASSERT_TRUE(waitForPage("seen.filter((event) => event.startsWith('click')).length === 2")) << seen();
  EXPECT_EQ(kindsSeen(), click + "," + click);
  forgetEvents();
  pointer_->press(2);
  pointer_->release(2);
  EXPECT_TRUE(waitForPage("seen.some((event) => event.startsWith('mouseup'))")) << seen();
}

TEST_P(FloatingPage, WhatCannotBeDrawnIsLeftOutUntilItCan) {
  constexpr CGFloat nothing = std::numeric_limits<CGFloat>::quiet_NaN();
  const auto expectShown = [&](bool expected) {
    EXPECT_TRUE(platform_->runUntil([&] { return (platform_->takePicture()(195, 422) == pageColour) == expected; }));
  };
  for (const auto& transform :
       {CGAffineTransform::makeScale(0, 1), CGAffineTransform::makeScale(nothing, 1),
        CGAffineTransform::makeScale(1e-300, 1e300), CGAffineTransform::makeTranslation(1e300, 0)}) {
    box_->setTransform(transform);
    expectShown(false);
    box_->setTransform({});
    expectShown(true);
  }
  box_->setAlpha(nothing);
  expectShown(false);
  box_->setAlpha(1);
  box_->setCornerRadius(nothing);
  expectShown(true);
  box_->setCenter({nothing, nothing});
  expectShown(false);
}

TEST_P(FloatingPage, AnActionMayEndTheSurface) {
  const auto screen = platform_->makeScreen(true);
  screen->window()->addGestureRecognizer(
      UITapGestureRecognizer::create([&](UITapGestureRecognizer&) { screen->endSurface(); }));
  ASSERT_TRUE(platform_->runUntil([&] { return screen->window()->bounds().size.width > 0; }));
  std::string reason;
  const auto pointer = screen->openPointer(reason);
  // A window gets input once it has drawn something, which it may have done before the count.
  const auto frames = screen->countFrames();
  screen->window()->setBackgroundColor(UIColor{.green = 1});
  ASSERT_TRUE(platform_->runUntil([&] { return frames() > 0; }));
  pointer->click({100, 100});
  EXPECT_TRUE(platform_->runUntil([&] { return screen->window() == nullptr; }));
}

TEST_P(FloatingPage, TheAgentViewIsDraggedAndTappedByAMouse) {
  const auto view = VelnorAgentView::create(Region::custom(platform_->address(PageKind::agentTool)), "shop", false);
  view->setFrame(whole);
  view->setTapToMaximize(true);
  std::string last;
  view->setEventHandler([&](const AgentEvent& event) { last = encodeJson(event); });
  const auto waitFor = [&](std::string_view event) { return platform_->runUntil([&] { return last == event; }); };
  platform_->show(view);
  view->loadBooking("b");
  ASSERT_TRUE(waitFor(R"({"didLoad":{}})"));
  platform_->pagePostsValue(*view, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
  ASSERT_TRUE(waitFor(R"({"didMinimize":{}})"));
  ASSERT_NO_FATAL_FAILURE(show());

  pointer_->move({60, 100});
  pointer_->press();
  pointer_->move({80, 120});
  // Or the whole way is told as one movement, and that only begins the drag.
  ASSERT_NO_FATAL_FAILURE(show());
  pointer_->moveInSteps({280, 400});
  pointer_->release();
  const CGFloat right = whole.size.width - view->frame().size.width / 2;
  ASSERT_TRUE(platform_->runUntil([&] { return view->presentation().center.x == right; }));
  EXPECT_TRUE(view->isMinimized());
  ASSERT_NO_FATAL_FAILURE(show());
  pointer_->click(view->center());
  ASSERT_TRUE(waitFor(R"({"didMaximize":{}})"));
  EXPECT_EQ(view->frame(), whole);
  const auto width = platform_->evaluate(*view, "innerWidth");
  EXPECT_EQ(width ? width->integer() : std::nullopt, 390);
  view->removeFromSuperview();
}

TEST_P(FloatingPage, ADragEndsWithItsWindowAndItsSurface) {
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(beginDrag({309, 674}, {250, 600}));
  platform_->setSurfaceVisible(false);
  EXPECT_EQ(dragState_, UIGestureRecognizerState::cancelled);
  platform_->setSurfaceVisible(true);
  pointer_->release();
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(dragBy({std::round(box_->center().x), std::round(box_->center().y)}, {-100, -100}));
  expectClickInPage(box_->center());
}

TEST_P(FloatingPage, WhatGoesAtTheEndOfItsDragLeavesThePageNoPartOfIt) {
  const auto cover = UIView::create({{100, 300}, {200, 200}});
  cover->addGestureRecognizer(UIPanGestureRecognizer::create([&](UIPanGestureRecognizer& pan) {
    dragState_ = pan.state();
    if (dragState_ == UIGestureRecognizerState::ended) cover->setHidden(true);
  }));
  platform_->window()->addSubview(cover);
  for (int time = 0; time < 5; ++time) {
    cover->setHidden(false);
    ASSERT_NO_FATAL_FAILURE(show());
    ASSERT_NO_FATAL_FAILURE(beginDrag({200, 400}, {180, 380}));
    pointer_->move({170, 370});
    pointer_->release();
    ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::ended; }));
    ASSERT_NO_FATAL_FAILURE(show());
    pointer_->press();
    pointer_->release();
    ASSERT_TRUE(waitForPage("seen.includes('click 170 370')")) << seen();
    EXPECT_EQ(kindsSeen(), "pointerdown,mousedown,pointerup,mouseup,click") << seen();
    forgetEvents();
  }
}

INSTANTIATE_TEST_SUITE_P(, FloatingPage, testing::ValuesIn(surfaces()),
                         [](const auto& engine) { return engine.param.name; });

}  // namespace
}  // namespace corvane::contract
