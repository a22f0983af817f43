#include "corvane/platform/engine/held_touches.h"

#include <gtest/gtest.h>

#include "corvane/platform/views/ui_pan_gesture_recognizer.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"
#include "tests/support/headless_test.h"

namespace corvane::engine {
namespace {

using enum TouchPhase;
using Verdict = HeldTouches::Verdict;

class HeldTouchesTest : public HeadlessTest {
 protected:
  HeldTouchesTest() { window_->addSubview(view_); }

  Verdict send(TouchPhase phase, CGPoint location, std::uint64_t finger = 1) {
    const auto held = held_;
    return held->handle({finger, phase, location});
  }

  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {300, 300}});
  std::shared_ptr<UIView> view_ = UIView::create({{0, 0}, {200, 200}});
  std::shared_ptr<HeldTouches> held_ = std::make_shared<HeldTouches>(window_);
};

TEST_F(HeldTouchesTest, WhatIsNobodysGesturePassesAndADragEnds) {
  EXPECT_EQ(send(began, {100, 100}), Verdict::passes);
  EXPECT_EQ(send(moved, {150, 100}), Verdict::passes);
  EXPECT_EQ(send(ended, {150, 100}), Verdict::passes);
  EXPECT_EQ(send(moved, {150, 100}), Verdict::passes) << "of a finger that is not down";

  view_->addGestureRecognizer(UIPanGestureRecognizer::create([](UIPanGestureRecognizer&) {}));
  EXPECT_EQ(send(began, {100, 100}), Verdict::ends);
  EXPECT_EQ(send(moved, {180, 100}), Verdict::ends);
  EXPECT_TRUE(held_->isBusy());
  EXPECT_EQ(send(began, {10, 10}, 2), Verdict::ends) << "a second finger is for nobody";
  EXPECT_EQ(held_->handleOtherButton(2, true), Verdict::ends);
  EXPECT_EQ(send(ended, {180, 100}), Verdict::ends);
  EXPECT_EQ(send(ended, {10, 10}, 2), Verdict::ends);
  EXPECT_EQ(held_->handleOtherButton(2, false), Verdict::ends) << "nobody has seen its press";
  EXPECT_EQ(held_->handleOtherButton(2, true), Verdict::passes);
}

TEST_F(HeldTouchesTest, WhatTurnsOutToBeNoGestureIsPlayedFromItsStart) {
  view_->addGestureRecognizer(UITapGestureRecognizer::create([](UITapGestureRecognizer&) {}));
  EXPECT_EQ(send(began, {100, 100}), Verdict::ends);
  EXPECT_EQ(send(moved, {100, 190}), Verdict::playedFromStart);
  EXPECT_FALSE(held_->isBusy());
  EXPECT_EQ(send(ended, {100, 190}), Verdict::passes);
}

TEST_F(HeldTouchesTest, AnActionMayCancelAllAndEndWhatIsHeld) {
  view_->addGestureRecognizer(UITapGestureRecognizer::create([this](UITapGestureRecognizer&) {
    held_->cancelAll();
    held_.reset();
  }));
  EXPECT_EQ(send(began, {100, 100}), Verdict::ends);
  EXPECT_EQ(send(ended, {100, 100}), Verdict::ends);
  EXPECT_EQ(held_, nullptr);
}

}  // namespace
}  // namespace corvane::engine
