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

}  // namespace
}  // namespace corvane::contract
