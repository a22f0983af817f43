// A page in a small round window that can be dragged, with a real mouse over it.
#include <gtest/gtest.h>
#include <gtk/gtk.h>

#include <chrono>
#include <cmath>
#include <limits>
#include <memory>
#include <string>

#include "corvane/platform/gtk/gtk_frame_meter.h"
#include "corvane/platform/web/wk_web_view.h"
#include "demo/pointer_input.h"
#include "tests/contract/gtk_platform.h"

namespace corvane::contract {
namespace {

using namespace std::chrono_literals;

constexpr CGFloat scale = 0.33;
constexpr CGRect whole{{0, 0}, {390, 844}};
/// Where the small window stands at first.
constexpr CGPoint corner{250, 500};
constexpr Colour pageColour{0, 128, 0};

class FloatingPage : public testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = RealEnginePlatform::make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
    pointer_ = demo::PointerInput::open(platform_->surface()->widget(), reason);
    if (pointer_ == nullptr) GTEST_SKIP() << reason;
    page_ = WKWebView::create(whole, {});
    build();
    page_->load({.url = platform_->page("seen.html")});
    ASSERT_TRUE(waitForPage("document.readyState === 'complete' && innerWidth === 390"));
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
    GtkWidget* const widget = platform_->surface()->widget();
    const gtk::FrameMeter meter(widget);
    gtk_widget_queue_draw(widget);
    ASSERT_TRUE(platform_->runUntil([&] { return meter.result().frames > 0; }));
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
  std::unique_ptr<demo::PointerInput> pointer_;
  std::shared_ptr<UIView> box_ = UIView::create(whole);
  std::shared_ptr<WKWebView> page_;
  std::shared_ptr<UIPanGestureRecognizer> drag_;
  UIGestureRecognizerState dragState_{};
  /// Where the drag began, which is where the mouse had come so far that it was one, and where it is.
  CGPoint grip_;
  CGPoint finger_;
};

TEST_F(FloatingPage, ClicksReachThePageAndDragsTheWindow) {
  expectClickInPage({200, 700});
  shrink();
  expectClickInPage({309, 674});
  ASSERT_NO_FATAL_FAILURE(dragBy({309, 674}, {-120, -300}));
  // That the page saw nothing of the drag shows here, too.
  expectClickInPage(box_->center());
  grow();
  expectClickInPage({309, 674});
}

TEST_F(FloatingPage, ATapIsTheViewsWhereThePageTakesNoTouches) {
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

TEST_F(FloatingPage, WhatTurnsOutToBeNoTapReachesThePageAsAWhole) {
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

TEST_F(FloatingPage, WidgetsOfTheHostAppWorkUnderTheWindowAndBesideIt) {
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

  box_->setUserInteractionEnabled(false);
  pointer_->click({310, 610});
  ASSERT_TRUE(platform_->runUntil([&] { return beneath == 2; }));
  box_->setUserInteractionEnabled(true);
  expectClickInPage({310, 610});
  EXPECT_EQ(beside, 1);
}

TEST_F(FloatingPage, AnimationsMoveThePictureAndNotThePage) {
  for (const bool isShrinking : {true, false}) {
    const gtk::FrameMeter meter(platform_->surface()->widget());
    ASSERT_NO_FATAL_FAILURE(animate(250ms, [&] { isShrinking ? shrink() : grow(); }));
    EXPECT_GE(meter.result().frames, 3);
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

TEST_F(FloatingPage, OtherButtonsAndManyClicksReachThePageInOrder) {
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

TEST_F(FloatingPage, WhatCannotBeDrawnIsLeftOutUntilItCan) {
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

TEST_F(FloatingPage, AnActionMayEndTheSurface) {
  auto surface = gtk::Surface::create();
  auto* const hostWindow = reinterpret_cast<GtkWindow*>(gtk_window_new());
  gtk_window_set_default_size(hostWindow, 200, 200);
  gtk_window_set_decorated(hostWindow, FALSE);
  gtk_window_set_child(hostWindow, surface->widget());
  gtk_window_present(hostWindow);
  surface->window()->addGestureRecognizer(
      UITapGestureRecognizer::create([&](UITapGestureRecognizer&) { surface.reset(); }));
  ASSERT_TRUE(platform_->runUntil([&] { return surface->window()->bounds().size.width > 0; }));
  std::string reason;
  const auto pointer = demo::PointerInput::open(surface->widget(), reason);
  // A window gets input once it has drawn something.
  const gtk::FrameMeter meter(surface->widget());
  ASSERT_TRUE(platform_->runUntil([&] { return meter.result().frames > 0; }));
  pointer->click({100, 100});
  EXPECT_TRUE(platform_->runUntil([&] { return surface == nullptr; }));
  gtk_window_destroy(hostWindow);
}

TEST_F(FloatingPage, TheAgentViewIsDraggedAndTappedByAMouse) {
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

TEST_F(FloatingPage, ADragEndsWithItsWindowAndItsSurface) {
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(beginDrag({309, 674}, {250, 600}));
  gtk_widget_set_visible(platform_->surface()->widget(), FALSE);
  EXPECT_EQ(dragState_, UIGestureRecognizerState::cancelled);
  gtk_widget_set_visible(platform_->surface()->widget(), TRUE);
  pointer_->release();
  ASSERT_NO_FATAL_FAILURE(show());
  ASSERT_NO_FATAL_FAILURE(dragBy({std::round(box_->center().x), std::round(box_->center().y)}, {-100, -100}));
  expectClickInPage(box_->center());
}

}  // namespace
}  // namespace corvane::contract
