// What pages in small windows have to do with the toolkit's own widgets, windows, keys and drags.
#include <gtk/gtk.h>

#include "corvane/platform/gtk/gtk_surface.h"
#include "tests/contract/floating_page.h"
#include "tests/contract/gtk_platform.h"

namespace corvane::contract {
namespace {

using namespace std::chrono_literals;

class GtkFloatingPage : public FloatingPage {
 protected:
  GtkEnginePlatform& gtk() { return dynamic_cast<GtkEnginePlatform&>(*platform_); }
};

TEST_P(GtkFloatingPage, ThePageIsDrawnWhereverItsSurfaceIsMoved) {
  GtkWidget* const widget = gtk().surface();
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

TEST_P(GtkFloatingPage, TheKeyWindowIsThatOfTheActiveOne) {
  const auto first = platform_->window();
  const auto other = corvane::gtk::Surface::create();
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

TEST_P(GtkFloatingPage, AQuestionAboutCaptureEndsWithItsPage) {
  gtk().useOwnCaptureDialog();
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

TEST_P(GtkFloatingPage, WhatIsDroppedOnThePageReplacesNothing) {
  GtkWidget* const shelf = gtk().addButton({{0, 0}, {100, 100}}, [] {});
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

INSTANTIATE_TEST_SUITE_P(, GtkFloatingPage, testing::Values(gtkEngine()), [](const auto&) { return "RealEngine"; });

}  // namespace
}  // namespace corvane::contract
