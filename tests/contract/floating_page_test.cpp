// A mouse over a page in a small window.
#include "tests/contract/floating_page.h"

#include <limits>

namespace corvane::contract {
namespace {

using namespace std::chrono_literals;

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
  {
    const gtk::FrameMeter meter(surface->widget());
    ASSERT_TRUE(platform_->runUntil([&] { return meter.result().frames > 0; }));
  }
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

TEST_F(FloatingPage, AQuestionAboutCaptureEndsWithItsPage) {
  platform_->useOwnCaptureDialog();
  const auto dialogs = [] {
    GListModel* const windows = gtk_window_get_toplevels();
    int count = 0;
    for (guint place = 0; place < g_list_model_get_n_items(windows); ++place) {
      auto* const window = static_cast<GObject*>(g_list_model_get_item(windows, place));
      if (g_type_is_a(G_OBJECT_TYPE(window), g_type_from_name("GtkMessageDialog")) != FALSE) ++count;
      g_object_unref(window);
    }
    return count;
  };
  for (int load = 0; load < 2; ++load) {
    EXPECT_TRUE(evaluate("navigator.mediaDevices.getUserMedia({ video: true }); 0"));
    ASSERT_TRUE(platform_->runUntil([&] { return dialogs() == 1; }));
    page_->load({.url = platform_->page("seen.html?" + std::to_string(load))});
    ASSERT_TRUE(platform_->runUntil([&] { return dialogs() == 0; }));
    ASSERT_TRUE(
        waitForPage("document.readyState === 'complete' && location.search === '?" + std::to_string(load) + "'"));
  }
}

TEST_F(FloatingPage, WhatIsDroppedOnThePageReplacesNothing) {
  GtkWidget* const shelf = platform_->addHostButton({{0, 0}, {100, 100}}, [] {});
  auto* const source = gtk_drag_source_new();
  const std::string link = platform_->page("plain.html") + "\r\n";
  GBytes* const bytes = g_bytes_new(link.data(), link.size());
  gtk_drag_source_set_content(source, gdk_content_provider_new_for_bytes("text/uri-list", bytes));
  g_bytes_unref(bytes);
  gtk_event_controller_set_propagation_phase(reinterpret_cast<GtkEventController*>(source), GTK_PHASE_CAPTURE);
  gtk_widget_add_controller(shelf, reinterpret_cast<GtkEventController*>(source));
  box_->setFrame({{150, 0}, {240, 844}});
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_TRUE(evaluate("addEventListener('dragover', () => { window.wasOver = true; }); 0"));
  pointer_->move({50, 50});
  pointer_->press();
  for (int step = 1; step <= 20; ++step) {
    pointer_->move({50.0 + step * 10, 50.0 + step * 10});
    ASSERT_NO_FATAL_FAILURE(show());
  }
  ASSERT_TRUE(waitForPage("window.wasOver === true"));
  pointer_->release();
  const auto end = RunLoop::main().now() + 1s;
  ASSERT_TRUE(platform_->runUntil([&] { return RunLoop::main().now() > end; }));
  EXPECT_TRUE(waitForPage("window.wasOver === true")) << "it is another page";
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
