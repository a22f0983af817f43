#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <sstream>
#include <string>

#include "corvane/platform/views/ui_pan_gesture_recognizer.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane {
namespace {

/// A window with a floating view in front of a screen; the floating view has a child that sticks out on its right.
struct Scene {
  Scene() {
    window->addSubview(screen);
    window->addSubview(floating);
    floating->addSubview(child);
  }

  [[nodiscard]] std::string hit(CGPoint point) const {
    const auto view = window->hitTest(point);
    if (view == nullptr) return "none";
    if (view == window) return "window";
    if (view == screen) return "screen";
    return view == floating ? "floating" : "child";
  }

  std::shared_ptr<UIWindow> window = UIWindow::create({{0, 0}, {400, 800}});
  std::shared_ptr<UIView> screen = UIView::create({{0, 0}, {400, 400}});
  std::shared_ptr<UIView> floating = UIView::create({{100, 100}, {100, 100}});
  std::shared_ptr<UIView> child = UIView::create({{50, 0}, {100, 50}});
};

TEST(HitTest, FindsTheFrontmostViewThatTakesTouches) {
  using S = Scene&;
  const auto clip = [](S s, CGFloat radius) {
    s.floating->setClipsToBounds(true), s.floating->setCornerRadius(radius);
  };
  const auto turn = [](S s, const CGAffineTransform& transform) { s.floating->setTransform(transform); };
  constexpr double eighth = std::numbers::sqrt2 / 2;
  struct Row {
    const char* what;
    std::function<void(S)> change;
    /// Points, each with the view that is hit there.
    std::string expected;
  };
  for (const Row& row : {
           Row{"as it is", [](S) {}, "100 100 floating  99.9 110 screen  160 110 child  249 149 child  10 500 none"},
           Row{"order", [](S s) { s.window->bringSubviewToFront(s.screen); }, "160 110 screen"},
           Row{"hidden", [](S s) { s.floating->setHidden(true); }, "160 110 screen"},
           Row{"faint", [](S s) { s.floating->setAlpha(0.009); }, "160 110 screen"},
           Row{"barely visible", [](S s) { s.floating->setAlpha(0.01); }, "160 110 child"},
           Row{"no touches", [](S s) { s.floating->setUserInteractionEnabled(false); }, "160 110 screen"},
           Row{"no touches inside", [](S s) { s.child->setUserInteractionEnabled(false); }, "160 110 floating"},
           Row{"clip", [&](S s) { clip(s, 0); }, "199 110 child  201 110 screen  101 101 floating"},
           Row{"round, but no clip", [](S s) { s.floating->setCornerRadius(50); }, "101 199 floating"},
           Row{"round clip", [&](S s) { clip(s, 30); },
               "105 195 screen  112 188 floating  195 105 screen  145 100 floating  100 150 floating"},
           Row{"a wide one", [&](S s) { s.floating->setFrame({{100, 100}, {100, 40}}), clip(s, 900); },
               "101 101 screen  120 101 floating  120 139 floating  104 106 screen  108 106 floating"},
           Row{"a high one", [&](S s) { s.floating->setFrame({{100, 100}, {40, 100}}), clip(s, 900); },
               "101 120 floating  139 180 floating  106 104 screen"},
           Row{"radius beyond half", [&](S s) { clip(s, 900); }, "110 190 screen  120 180 floating"},
           Row{"scaled about the middle, with the radius",
               [&](S s) { clip(s, 30), turn(s, CGAffineTransform::makeScale(0.5, 0.5)); },
               "124 150 screen  126 150 floating  151 130 child  126 174 screen  131 169 floating"},
           Row{"turned by an eighth", [&](S s) { turn(s, {.a = eighth, .b = eighth, .c = -eighth, .d = eighth}); },
               "101 101 screen  150 81 floating"},
           Row{"scaled to nothing", [&](S s) { turn(s, {.a = 0, .d = 0}); }, "150 150 screen"},
           Row{"not a number", [](S s) { s.floating->setCenter({std::nan(""), 150}); }, "160 110 screen"},
           Row{"scrolled", [](S s) { s.floating->setBounds({{0, 60}, {100, 100}}); },
               "160 95 screen  160 105 floating"},
           Row{"a window that listens", [](S s) { s.window->addGestureRecognizer(UIPanGestureRecognizer::create({})); },
               "10 500 window  10 900 none"},
       }) {
    Scene scene;
    row.change(scene);
    std::istringstream hits(row.expected);
    CGPoint point;
    for (std::string expected; hits >> point.x >> point.y >> expected;) {
      EXPECT_EQ(scene.hit(point), expected) << row.what << ": " << point.x << ", " << point.y;
    }
  }
}

TEST(UIView, PointsConvertThroughTheViewsInCommon) {
  const Scene scene;
  scene.floating->setTransform(CGAffineTransform::makeScale(0.5, 0.25));
  scene.child->setBounds({{5, 0}, {100, 50}});
  EXPECT_EQ(scene.child->convertPoint({5, 0}, scene.floating.get()), (CGPoint{50, 0}));
  EXPECT_EQ(scene.child->convertPoint({5, 0}, nullptr), (CGPoint{150, 137.5}));
  EXPECT_EQ(scene.screen->convertPoint({150, 137.5}, scene.child.get()), (CGPoint{5, 0}));
  EXPECT_EQ(scene.child->convertPointFrom({150, 137.5}, nullptr), (CGPoint{5, 0}));
  EXPECT_EQ(scene.floating->convertPointFrom({5, 0}, scene.child.get()), (CGPoint{50, 0}));
  scene.window->setFrame({{30, 30}, {400, 800}});
  EXPECT_EQ(scene.screen->convertPoint({1, 2}, nullptr), (CGPoint{1, 2})) << "where the window lies does not matter";
  scene.floating->setTransform(CGAffineTransform::makeScale(0, 0));
  scene.floating->setBounds({{0, 0}, {100, 60}});
  EXPECT_EQ(scene.floating->convertPointFrom({3, 3}, nullptr), (CGPoint{50, 30}));
  EXPECT_EQ(scene.screen->convertPointFrom({1, 2}, scene.window.get()), (CGPoint{1, 2}));
}

}  // namespace
}  // namespace corvane
