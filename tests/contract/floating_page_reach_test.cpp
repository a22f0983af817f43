// Fingers, keys and windows around a page in a small window.
#include <functional>
#include <vector>

#include "tests/contract/floating_page.h"

namespace corvane::contract {
namespace {

TEST_F(FloatingPage, FingersTapThePageAndDragTheWindowAndNothingElse) {
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

TEST_F(FloatingPage, ThePageIsDrawnWhereverItsSurfaceIsMoved) {
  GtkWidget* const widget = platform_->surface()->widget();
  auto* const overlay = reinterpret_cast<GtkOverlay*>(gtk_widget_get_parent(widget));
  GtkWidget* const window = gtk_window_new();
  gtk_window_set_default_size(reinterpret_cast<GtkWindow*>(window), 390, 844);
  gtk_window_set_decorated(reinterpret_cast<GtkWindow*>(window), FALSE);
  GtkWidget* const box = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  const auto expectPicture = [&](const char* place) {
    EXPECT_TRUE(platform_->runUntil([&] { return platform_->takePicture()(195, 422) == pageColour; })) << place;
  };
  g_object_ref(widget);
  gtk_overlay_remove_overlay(overlay, widget);
  gtk_box_append(reinterpret_cast<GtkBox*>(box), widget);
  gtk_overlay_add_overlay(overlay, box);
  expectPicture("another box");
  g_object_ref(box);
  gtk_overlay_remove_overlay(overlay, box);
  gtk_window_set_child(reinterpret_cast<GtkWindow*>(window), box);
  gtk_window_present(reinterpret_cast<GtkWindow*>(window));
  expectPicture("an ancestor in another window");
  gtk_window_destroy(reinterpret_cast<GtkWindow*>(window));
  gtk_box_remove(reinterpret_cast<GtkBox*>(box), widget);
  gtk_overlay_add_overlay(overlay, widget);
  expectPicture("back from a window that was closed");
  EXPECT_TRUE(waitForPage("document.documentElement.style.opacity === ''")) << "the page is left as it was";
  g_object_unref(box);
  g_object_unref(widget);
}

TEST_F(FloatingPage, TheKeyWindowIsThatOfTheActiveOne) {
  const auto first = platform_->window();
  const auto other = gtk::Surface::create();
  auto* const hostWindow = reinterpret_cast<GtkWindow*>(gtk_window_new());
  gtk_window_set_default_size(hostWindow, 200, 200);
  gtk_window_set_child(hostWindow, other->widget());
  pointer_->move({100, 100});
  EXPECT_TRUE(platform_->runUntil([&] { return first->isKeyWindow(); }));
  gtk_window_present(hostWindow);
  EXPECT_TRUE(platform_->runUntil([&] { return other->window()->isKeyWindow(); }));
  gtk_window_destroy(hostWindow);
  // On a bare X server nobody hands the focus on.
  if (!pointer_->hasFingers()) return;
  EXPECT_TRUE(platform_->runUntil([&] { return first->isKeyWindow(); }));
}

TEST_F(FloatingPage, KeysGoToWhatTheUserSees) {
  int covered = 0;
  int beside = 0;
  platform_->addHostButton({{20, 450}, {100, 50}}, [&] { ++covered; });
  GtkWidget* const widget = platform_->surface()->widget();
  const auto focus = [&] { return gtk_root_get_focus(gtk_widget_get_root(widget)); };
  ASSERT_TRUE(platform_->runUntil([&] { return focus() != nullptr && gtk_widget_get_parent(focus()) == widget; }));
  // The page has a field, and behind it the way leads on, past what lies under the page, to it again.
  EXPECT_TRUE(
      evaluate("document.body.innerHTML = '<input id=field>'; addEventListener('keydown', (event) => "
               "seen.push(event.key)); 0"));
  for (int tabs = 1; tabs <= 4; ++tabs) pointer_->type({GDK_KEY_Tab, GDK_KEY_space});
  pointer_->type({GDK_KEY_a});
  EXPECT_TRUE(waitForPage("seen.includes('a')")) << seen();
  EXPECT_EQ(covered, 0);

  shrink();
  platform_->addHostButton({{20, 100}, {100, 50}}, [&] { ++beside; });
  ASSERT_NO_FATAL_FAILURE(show());
  page_->setUserInteractionEnabled(false);
  const auto tabTo = [&](const std::function<bool()>& isThere) {
    for (int tabs = 0; tabs < 5 && !isThere(); ++tabs) {
      GtkWidget* const before = focus();
      pointer_->type({GDK_KEY_Tab});
      EXPECT_TRUE(platform_->runUntil([&] { return focus() != before; }));
    }
    EXPECT_TRUE(isThere());
  };
  tabTo([&] { return focus() == widget; });
  const auto expectWay = [&](unsigned key, const std::function<bool(CGPoint)>& hasMoved) {
    pointer_->type({key});
    EXPECT_TRUE(platform_->runUntil([&] { return hasMoved(box_->center()); })) << key;
  };
  expectWay(GDK_KEY_Left, [](CGPoint center) { return center.x < 100; });
  expectWay(GDK_KEY_Up, [](CGPoint center) { return center.y < 100; });
  expectWay(GDK_KEY_Right, [](CGPoint center) { return center.x > 300; });
  expectWay(GDK_KEY_Down, [](CGPoint center) { return center.y > 700; });
  const auto besideButton = [&] {
    return gtk_widget_pick(reinterpret_cast<GtkWidget*>(gtk_widget_get_root(widget)), 70, 102, GTK_PICK_DEFAULT);
  };
  int taps = 0;
  box_->addGestureRecognizer(UITapGestureRecognizer::create([&](UITapGestureRecognizer&) { ++taps; }));
  pointer_->type({GDK_KEY_Return});
  EXPECT_TRUE(platform_->runUntil([&] { return taps == 1; }));
  tabTo([&] { return focus() == besideButton(); });
  pointer_->type({GDK_KEY_space});
  EXPECT_TRUE(platform_->runUntil([&] { return beside == 1; }));
}

}  // namespace
}  // namespace corvane::contract
