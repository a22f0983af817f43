/// A page in a small round window that can be dragged, with a real mouse, fingers and keys over it.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <memory>
#include <string>
#include <string_view>

#include "corvane/platform/web/wk_web_view.h"
#include "tests/contract/real_engine_platform.h"

namespace corvane::contract {

inline constexpr CGFloat scale = 0.33;
inline constexpr CGRect whole{{0, 0}, {390, 844}};
/// Where the small window stands at first.
inline constexpr CGPoint corner{250, 500};
inline constexpr Colour pageColour{0, 128, 0};

class FloatingPage : public testing::TestWithParam<RealEngineMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
    pointer_ = platform_->openPointer(reason);
    if (pointer_ == nullptr) GTEST_SKIP() << reason;
    page_ = WKWebView::create(whole, {});
    build();
    page_->load({.url = platform_->page("seen.html")});
    ASSERT_TRUE(waitForPage("typeof seen === 'object' && document.readyState === 'complete' && innerWidth === 390"));
    ASSERT_TRUE(platform_->runUntil([&] { return platform_->takePicture()(195, 422) == pageColour; }));
    forgetEvents();
  }

  void TearDown() override { pointer_.reset(); }

  void build() {
    box_->setClipsToBounds(true);
    box_->addSubview(page_);
    page_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    drag_ = UIPanGestureRecognizer::create([this](UIPanGestureRecognizer& pan) {
      dragState_ = pan.state();
      const CGPoint finger = pan.location(nullptr);
      if (dragState_ == UIGestureRecognizerState::began) finger_ = grip_ = finger;
      const CGPoint center = box_->center();
      box_->setCenter({center.x + finger.x - finger_.x, center.y + finger.y - finger_.y});
      finger_ = finger;
    });
    platform_->show(box_);
  }

  /// Lets the present state get on screen: what is clicked is what the user sees.
  void show() {
    const auto frames = platform_->countFrames();
    platform_->queueFrame();
    ASSERT_TRUE(platform_->runUntil([&] { return frames() > 0; }));
  }
  void shrink() {
    box_->setTransform(CGAffineTransform::makeScale(scale, scale));
    box_->setFrame({corner, {390 * scale, 844 * scale}});
    box_->setCornerRadius(14 / scale);
    box_->addGestureRecognizer(drag_);
  }
  void grow() {
    box_->removeGestureRecognizer(drag_);
    box_->setTransform({});
    box_->setFrame(whole);
    box_->setCornerRadius(0);
  }

  /// Lets something happen inside an animation, and waits for its end.
  void animate(std::chrono::nanoseconds duration, const std::function<void()>& animations) {
    bool isOver = false;
    UIView::animate(duration, animations, [&](bool) { isOver = true; });
    ASSERT_TRUE(platform_->runUntil([&] { return isOver; }));
  }

  EvaluationResult evaluate(std::string_view script) { return platform_->evaluate(*box_, script); }
  bool waitForPage(std::string_view condition) {
    return platform_->runUntil([&] {
      const auto holds = evaluate(condition);
      return holds && holds->boolean().value_or(false);
    });
  }
  void forgetEvents() { EXPECT_TRUE(evaluate("seen.length = 0")); }
  std::string seen() {
    const auto events = evaluate("seen.join(', ')");
    return std::string(events ? events->string().value_or("") : "");
  }

  CGPoint onPage(CGPoint point) const {
    const CGRect frame = box_->frame();
    const CGFloat factor = box_->transform().a;
    return {(point.x - frame.minX()) / factor, (point.y - frame.minY()) / factor};
  }
  /// The kinds of the events that the page has seen.
  std::string kindsSeen() {
    const auto kinds = evaluate("seen.map((event) => event.split(' ')[0]).join()");
    return std::string(kinds ? kinds->string().value_or("") : "");
  }
  /// Clicks, and expects that the page sees all of this click, in order and in its place, and nothing else.
  void expectClickInPage(CGPoint point) {
    ASSERT_NO_FATAL_FAILURE(show());
    pointer_->click(point);
    ASSERT_TRUE(waitForPage("seen.some((event) => event.startsWith('click'))")) << "saw only: " << seen();
    EXPECT_EQ(kindsSeen(), "pointerdown,mousedown,pointerup,mouseup,click") << seen();
    const CGPoint place = onPage(point);
    const CGFloat tolerance = 1 / box_->transform().a;
    const auto coordinate = [&](char index) {
      return evaluate(std::string("Number(seen[4].split(' ')[") + index + "])")->number().value_or(-99);
    };
    EXPECT_NEAR(coordinate('1'), place.x, tolerance) << seen();
    EXPECT_NEAR(coordinate('2'), place.y, tolerance) << seen();
    forgetEvents();
  }
  bool hasSeenClickAt(CGPoint point) {
    const CGPoint place = onPage(point);
    const CGFloat tolerance = 1 / box_->transform().a;
    return waitForPage("seen.some((event) => { const [kind, x, y] = event.split(' '); return kind === 'click' && "
                       "Math.hypot(x - " +
                       std::to_string(place.x) + ", y - " + std::to_string(place.y) + ") < 2 * " +
                       std::to_string(tolerance) + "; })");
  }
  /// Movements that come faster than pictures are told as one, and the first one is part of no drag's way.
  void beginDrag(CGPoint from, CGPoint to) {
    dragState_ = {};
    pointer_->move(from);
    pointer_->press();
    pointer_->move(to);
    ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::began; }));
  }
  void dragBy(CGPoint from, CGPoint way) {
    const CGPoint before = box_->center();
    const CGPoint to{from.x + way.x, from.y + way.y};
    beginDrag(from, {from.x + way.x / 4, from.y + way.y / 4});
    pointer_->moveInSteps(to);
    pointer_->release();
    ASSERT_TRUE(platform_->runUntil([&] { return dragState_ == UIGestureRecognizerState::ended; }));
    EXPECT_EQ(finger_, to);
    EXPECT_NEAR(box_->center().x, before.x + finger_.x - grip_.x, 1e-6);
    EXPECT_NEAR(box_->center().y, before.y + finger_.y - grip_.y, 1e-6);
    EXPECT_GT(std::hypot(box_->center().x - before.x, box_->center().y - before.y), 50);
  }

  std::unique_ptr<RealEnginePlatform> platform_;
  std::unique_ptr<TestPointer> pointer_;
  std::shared_ptr<UIView> box_ = UIView::create(whole);
  std::shared_ptr<WKWebView> page_;
  std::shared_ptr<UIPanGestureRecognizer> drag_;
  UIGestureRecognizerState dragState_{};
  /// Where the drag began, which is where the mouse had come so far that it was one, and where it is.
  CGPoint grip_;
  CGPoint finger_;
};

}  // namespace corvane::contract
