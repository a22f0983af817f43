// Fingers on a page in a small window, and other windows around it.
#include "tests/contract/floating_page.h"

namespace corvane::contract {
namespace {

TEST_P(FloatingPage, FingersTapThePageAndDragTheWindowAndNothingElse) {
  if (!pointer_->hasFingers()) GTEST_SKIP() << "No finger can be moved here";
  using enum TouchPhase;
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  const auto expectTap = [&] {
    forgetEvents();
    ASSERT_NO_FATAL_FAILURE(show());
    const CGPoint middle{std::round(box_->center().x), std::round(box_->center().y)};
    pointer_->touch(0, began, middle);
    pointer_->touch(0, ended, middle);
    EXPECT_TRUE(hasSeenClickAt(middle)) << seen();
    forgetEvents();
  };
  const auto beginDragging = [&] {
    pointer_->touch(0, began, {309, 674});
    pointer_->touch(0, moved, {280, 640});
    ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::began; }));
  };
  expectTap();

  // Cancelled while nobody knows yet what it becomes, and while it is a drag.
  pointer_->touch(0, began, {309, 674});
  pointer_->touch(0, cancelled);
  expectTap();
  ASSERT_NO_FATAL_FAILURE(beginDragging());
  pointer_->touch(0, cancelled);
  ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::cancelled; }));
  EXPECT_EQ(seen(), "");
  expectTap();

  ASSERT_NO_FATAL_FAILURE(beginDragging());
  pointer_->touch(1, began, {300, 600});
  pointer_->touch(1, moved, {320, 560});
  pointer_->touch(0, moved, {180, 400});
  pointer_->touch(1, ended);
  pointer_->touch(0, moved, {160, 380});
  pointer_->touch(0, ended);
  ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::ended; }));
  EXPECT_EQ(finger_, (CGPoint{160, 380}));
  EXPECT_EQ(seen(), "");
  expectTap();
}

TEST_P(FloatingPage, ThePageIsShownInWhateverWindowItsSurfaceIsPut) {
  for (const bool isAlone : {true, false}) {
    platform_->moveSurface(isAlone);
    EXPECT_TRUE(platform_->runUntil([&] { return platform_->takePicture()(195, 422) == pageColour; }));
  }
}

TEST_P(FloatingPage, KeysGoToWhatTheUserSees) {
  int clicks = 0;
  platform_->addHostButton({{20, 450}, {100, 50}}, [&] { ++clicks; });
  using Key = TestPointer::Key;
  ASSERT_TRUE(platform_->runUntil([&] { return platform_->focus() == Focus::page; }));
  // The page has a field, and behind it the way leads on, past what lies under the page, to it again.
  EXPECT_TRUE(
      evaluate("document.body.innerHTML = '<input id=field>'; addEventListener('keydown', (event) => "
               "seen.push(event.key)); 0"));
  for (int tabs = 1; tabs <= 4; ++tabs) pointer_->type({Key::tab, Key::space});
  pointer_->type({Key::a});
  EXPECT_TRUE(waitForPage("seen.includes('a')")) << seen();
  EXPECT_EQ(clicks, 0);

  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  page_->setUserInteractionEnabled(false);
  const auto tabTo = [&](Focus wanted) {
    for (int tabs = 0; tabs < 5 && platform_->focus() != wanted; ++tabs) {
      const Focus before = platform_->focus();
      pointer_->type({Key::tab});
      EXPECT_TRUE(platform_->runUntil([&] { return platform_->focus() != before; }));
    }
    EXPECT_EQ(platform_->focus(), wanted);
  };
  tabTo(Focus::surface);
  const auto expectWay = [&](Key key, const std::function<bool(CGPoint)>& hasMoved) {
    pointer_->type({key});
    EXPECT_TRUE(platform_->runUntil([&] { return hasMoved(box_->center()); })) << static_cast<int>(key);
  };
  expectWay(Key::left, [](CGPoint center) { return center.x < 100; });
  expectWay(Key::up, [](CGPoint center) { return center.y < 100; });
  expectWay(Key::right, [](CGPoint center) { return center.x > 300; });
  expectWay(Key::down, [](CGPoint center) { return center.y > 700; });
  int taps = 0;
  box_->addGestureRecognizer(UITapGestureRecognizer::create([&](UITapGestureRecognizer&) { ++taps; }));
  pointer_->type({Key::enter});
  EXPECT_TRUE(platform_->runUntil([&] { return taps == 1; }));
  tabTo(Focus::host);
  pointer_->type({Key::space});
  EXPECT_TRUE(platform_->runUntil([&] { return clicks == 1; }));
}

}  // namespace
}  // namespace corvane::contract
