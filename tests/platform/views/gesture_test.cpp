#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "corvane/platform/views/touch_anchor.h"
#include "tests/support/headless_test.h"
#include "tests/support/touch_storm.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using enum TouchOutcome;
using enum TouchPhase;
using State = UIGestureRecognizerState;

/// A floating view with a pan and a tap in a window, and a record of what their actions were called for.
class Gesture : public HeadlessTest {
 protected:
  Gesture() {
    window_->addSubview(view_);
    view_->addGestureRecognizer(pan_);
    view_->addGestureRecognizer(tap_);
  }

  void TearDown() override {
    HeadlessTest::TearDown();
    EXPECT_EQ(pan_->state(), State::possible);
    EXPECT_EQ(tap_->state(), State::possible);
  }

  TouchOutcome send(TouchPhase phase, CGPoint location, std::uint64_t finger = 1) {
    const auto window = window_;
    return window->sendTouch({finger, phase, location});
  }
  void expectTap() {
    send(began, {150, 150});
    EXPECT_EQ(send(ended, {150, 150}), claimed);
    EXPECT_THAT(std::exchange(told_, {}), ElementsAre("tap ended"));
  }
  void note(const char* name, const UIGestureRecognizer& recognizer) {
    static constexpr const char* names[] = {"possible", "began", "changed", "ended", "cancelled", "failed"};
    const char* state = names[static_cast<int>(recognizer.state())];
    told_.push_back(std::string(name) + " " + state);
    if (reaction_ && told_.back() == trigger_) std::exchange(reaction_, {})();
  }
  /// Does something inside the action with this record.
  void when(std::string trigger, std::function<void()> reaction) {
    trigger_ = std::move(trigger);
    reaction_ = std::move(reaction);
  }

  std::vector<std::string> told_;
  std::string trigger_;
  std::function<void()> reaction_;
  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {400, 800}});
  std::shared_ptr<UIView> view_ = UIView::create({{100, 100}, {100, 100}});
  std::shared_ptr<UIPanGestureRecognizer> pan_ =
      UIPanGestureRecognizer::create([this](UIPanGestureRecognizer& pan) { note("pan", pan); });
  std::shared_ptr<UITapGestureRecognizer> tap_ =
      UITapGestureRecognizer::create([this](UITapGestureRecognizer& tap) { note("tap", tap); });
};

TEST_F(Gesture, APanBeginsAfterTenPointsAndFollowsTheFinger) {
  view_->setTransform(CGAffineTransform::makeScale(0.5, 0.5));
  EXPECT_EQ(send(began, {140, 150}), held);
  EXPECT_EQ(send(moved, {146, 157.9}), held) << "less than ten points";
  EXPECT_EQ(send(moved, {146, 158}), claimed);
  EXPECT_EQ(pan_->translation(nullptr), (CGPoint{6, 8}));
  EXPECT_EQ(pan_->translation(view_.get()), (CGPoint{12, 16})) << "in the coordinates of a view of half the size";
  EXPECT_EQ(tap_->state(), State::failed);
  EXPECT_EQ(send(moved, {390, 10}), claimed);
  EXPECT_EQ(pan_->location(window_.get()), (CGPoint{390, 10}));
  EXPECT_EQ(send(moved, {390, 10}), claimed) << "no movement, no call";
  EXPECT_EQ(send(ended, {380, 20}), claimed);
  EXPECT_EQ(pan_->location(window_.get()), (CGPoint{380, 20}));
  EXPECT_THAT(told_, ElementsAre("pan began", "pan changed", "pan changed", "pan ended"));
}

TEST_F(Gesture, AShortTouchIsATapAndALongWayIsNone) {
  EXPECT_EQ(send(began, {150, 150}), held);
  EXPECT_EQ(send(ended, {153, 150}), claimed);
  EXPECT_THAT(std::exchange(told_, {}), ElementsAre("tap ended"));

  view_->removeGestureRecognizer(pan_);
  send(began, {150, 150});
  EXPECT_EQ(send(moved, {160, 150}), released);
  EXPECT_EQ(send(moved, {150, 150}), ignored) << "back again does not help";
  EXPECT_EQ(send(ended, {150, 150}), ignored);
  EXPECT_THAT(told_, IsEmpty());
  view_->addGestureRecognizer(tap_);
  expectTap();
}

TEST_F(Gesture, TouchesThatNobodyWantsAreGivenBack) {
  EXPECT_EQ(send(began, {10, 10}), ignored) << "beside the view";
  EXPECT_EQ(send(moved, {150, 150}), ignored);
  EXPECT_EQ(send(ended, {150, 150}), ignored);
  EXPECT_EQ(send(moved, {150, 150}), ignored) << "not down";
  view_->removeGestureRecognizer(tap_);
  EXPECT_EQ(send(began, {150, 150}), held);
  EXPECT_EQ(send(ended, {150, 150}), released) << "a tap for what lies under";
  EXPECT_EQ(send(began, {150, 150}), held);
  EXPECT_EQ(send(cancelled, {150, 150}), ignored);
  pan_->setEnabled(false);
  EXPECT_EQ(send(began, {150, 150}), ignored);
  pan_->setEnabled(true);
  EXPECT_EQ(send(moved, {190, 150}), ignored) << "enabled in the middle, it waits for the next touch";
  EXPECT_EQ(send(ended, {190, 150}), ignored);
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(Gesture, ASecondFingerFailsATapAndLeavesAPanAlone) {
  EXPECT_EQ(send(began, {150, 150}, 1), held);
  EXPECT_EQ(send(began, {160, 150}, 2), held);
  EXPECT_EQ(tap_->state(), State::failed);
  EXPECT_EQ(send(moved, {190, 150}, 2), held) << "the pan follows the first finger";
  EXPECT_EQ(send(moved, {150, 170}, 1), claimed);
  EXPECT_EQ(send(moved, {100, 150}, 2), claimed);
  EXPECT_EQ(pan_->location(nullptr), (CGPoint{150, 170}));
  EXPECT_EQ(send(ended, {150, 170}, 1), claimed);
  EXPECT_EQ(send(began, {150, 150}, 3), ignored) << "nothing begins before all fingers have left";
  EXPECT_EQ(send(ended, {150, 190}, 3), ignored);
  EXPECT_EQ(send(ended, {100, 150}, 2), claimed);
  EXPECT_THAT(std::exchange(told_, {}), ElementsAre("pan began", "pan ended"));

  send(began, {150, 150}, 1);
  send(began, {160, 150}, 2);
  EXPECT_EQ(send(ended, {160, 150}, 2), released);
  EXPECT_EQ(send(ended, {150, 150}, 1), released);
  EXPECT_THAT(told_, IsEmpty());
  expectTap();

  send(began, {150, 150}, 1);
  send(moved, {150, 170}, 1);
  EXPECT_EQ(send(began, {160, 150}, 2), claimed) << "a finger that joins a drag is not for the page";
  EXPECT_EQ(send(ended, {160, 150}, 2), claimed);
  send(ended, {150, 170}, 1);
  EXPECT_THAT(told_, ElementsAre("pan began", "pan ended"));
}

TEST_F(Gesture, OfNestedRecognizersTheInnermostWins) {
  const auto inner = UIView::create({{0, 0}, {100, 100}});
  const auto innerPan = UIPanGestureRecognizer::create([this](auto& pan) { note("inner", pan); });
  inner->addGestureRecognizer(innerPan);
  view_->addSubview(inner);
  send(began, {150, 150});
  send(moved, {170, 150});
  EXPECT_EQ(pan_->state(), State::failed);
  send(ended, {170, 150});
  EXPECT_THAT(told_, ElementsAre("inner began", "inner ended"));
}

TEST_F(Gesture, WhateverEndsAGestureCancelsIt) {
  const auto other = UIView::create({{0, 200}, {50, 50}});
  window_->addSubview(other);
  const auto otherWindow = UIWindow::create();
  struct Row {
    const char* what;
    std::function<void()> end;
    std::function<void()> restore;
  };
  const auto putBack = [&] { window_->addSubview(view_); };
  for (const Row& row : {
           Row{"cancel", [&] { send(cancelled, {170, 150}); }, [] {}},
           Row{"came down again", [&] { send(began, {5, 5}); }, [] {}},
           Row{"removed", [&] { view_->removeGestureRecognizer(pan_); }, [&] { view_->addGestureRecognizer(pan_); }},
           Row{"moved", [&] { other->addGestureRecognizer(pan_); }, [&] { view_->addGestureRecognizer(pan_); }},
           Row{"disabled", [&] { pan_->setEnabled(false); }, [&] { pan_->setEnabled(true); }},
           Row{"view removed", [&] { view_->removeFromSuperview(); }, putBack},
           Row{"view in another window", [&] { otherWindow->addSubview(view_); }, putBack},
       }) {
    for (const bool isInAction : {false, true}) {
      SCOPED_TRACE(testing::Message() << row.what << (isInAction ? " inside the action" : ""));
      if (isInAction) when("pan began", row.end);
      send(began, {150, 150});
      send(moved, {170, 150});
      if (!isInAction) row.end();
      EXPECT_EQ(pan_->state(), State::possible);
      send(moved, {180, 150});
      send(ended, {180, 150});
      EXPECT_THAT(std::exchange(told_, {}), ElementsAre("pan began", "pan cancelled"));
      row.restore();
      expectTap();
    }
  }
  send(began, {150, 150});
  tap_->setEnabled(false);
  tap_->setEnabled(true);
  EXPECT_EQ(send(ended, {150, 150}), released) << "a tap that was disabled meanwhile is forgotten";
  EXPECT_THAT(told_, IsEmpty());
}

TEST_F(Gesture, AnActionMayDropTheWindow) {
  const std::weak_ptr<UIWindow> weak = window_;
  when("pan began", [&] { window_.reset(); });
  UIWindow& window = *window_;
  window.sendTouch({1, began, {150, 150}});
  EXPECT_EQ(window.sendTouch({1, moved, {170, 150}}), claimed);
  EXPECT_TRUE(weak.expired());
  EXPECT_THAT(told_, ElementsAre("pan began", "pan cancelled"));
}

TEST_F(Gesture, APageMayMoveFromUnderAFingerThatRestsOnIt) {
  const TouchAnchor beside(*window_, {5, 5});
  const TouchAnchor anchor(*window_, {120, 170});
  view_->setCenter({view_->center().x, view_->center().y + 10});
  EXPECT_FALSE(anchor.hasMoved()) << "fingers are not that exact";
  UIView::animate(1s, [&] { view_->setCenter({300, 300}); });
  EXPECT_TRUE(anchor.hasMoved()) << "also while it is still shown near by";
  EXPECT_EQ(anchor.view(), view_);
  loop().advance(1s);
  const TouchAnchor last(*window_, {300, 300});
  view_->removeFromSuperview();
  EXPECT_TRUE(last.hasMoved() && !beside.hasMoved());
}

TEST(TouchRouter, NoStormOfTouchesLeavesARecognizerStuck) {
  int actions = 0;
  for (std::uint32_t seed = 0; seed < 2000; ++seed) {
    std::mt19937 random(seed);
    TouchStorm storm([&] { return static_cast<std::uint8_t>(random()); });
    for (int i = 0; i < 150; ++i) storm.step();
    storm.finish();
    ASSERT_EQ(storm.complaint(), "") << "seed " << seed;
    actions += storm.actionCount();
  }
  EXPECT_GT(actions, 5'000) << "the storm hits nothing";
}

}  // namespace
}  // namespace corvane
