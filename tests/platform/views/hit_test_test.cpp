#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

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
  constexpr double eighth = std::numbers::sqrt2 / 2;
  struct Row {
    const char* what;
    std::function<void(Scene&)> change;
    std::vector<std::pair<CGPoint, const char*>> expected;
  };
  for (const Row& row : {
           Row{"as it is",
               [](Scene&) {},
               {{{100, 100}, "floating"},
                {{99.9, 110}, "screen"},
                {{160, 110}, "child"},
                {{249, 149}, "child"},
                {{200, 160}, "screen"},
                {{10, 500}, "none"},
                {{-1, 5}, "none"}}},
           Row{"order", [](Scene& s) { s.window->bringSubviewToFront(s.screen); }, {{{160, 110}, "screen"}}},
           Row{"hidden", [](Scene& s) { s.floating->setHidden(true); }, {{{160, 110}, "screen"}}},
           Row{"faint", [](Scene& s) { s.floating->setAlpha(0.009); }, {{{160, 110}, "screen"}}},
           Row{"barely visible", [](Scene& s) { s.floating->setAlpha(0.01); }, {{{160, 110}, "child"}}},
           Row{"no interaction",
               [](Scene& s) { s.floating->setUserInteractionEnabled(false); },
               {{{160, 110}, "screen"}}},
           Row{"no interaction inside",
               [](Scene& s) { s.child->setUserInteractionEnabled(false); },
               {{{160, 110}, "floating"}, {{230, 110}, "screen"}}},
           Row{"clip",
               [](Scene& s) { s.floating->setClipsToBounds(true); },
               {{{199, 110}, "child"}, {{201, 110}, "screen"}, {{101, 101}, "floating"}}},
           Row{"rounded corners without clipping",
               [](Scene& s) { s.floating->setCornerRadius(50); },
               {{{101, 199}, "floating"}}},
           Row{"rounded clip",
               [](Scene& s) { s.floating->setClipsToBounds(true), s.floating->setCornerRadius(30); },
               {{{105, 195}, "screen"}, {{112, 188}, "floating"}, {{195, 105}, "screen"}, {{100, 150}, "floating"}}},
           Row{"radius beyond half",
               [](Scene& s) { s.floating->setClipsToBounds(true), s.floating->setCornerRadius(900); },
               {{{110, 190}, "screen"}, {{120, 180}, "floating"}}},
           Row{"scaled about the middle, with the radius",
               [](Scene& s) {
                 s.floating->setTransform(CGAffineTransform::makeScale(0.5, 0.5));
                 s.floating->setClipsToBounds(true), s.floating->setCornerRadius(30);
               },
               {{{124, 150}, "screen"},
                {{126, 150}, "floating"},
                {{151, 130}, "child"},
                {{126, 174}, "screen"},
                {{131, 169}, "floating"}}},
           Row{"turned by an eighth",
               [](Scene& s) {
                 s.child->removeFromSuperview();
                 s.floating->setTransform({.a = eighth, .b = eighth, .c = -eighth, .d = eighth});
               },
               {{{101, 101}, "screen"}, {{150, 81}, "floating"}, {{219, 150}, "floating"}}},
           Row{"scaled to nothing",
               [](Scene& s) { s.floating->setTransform({.a = 0, .d = 0}); },
               {{{150, 150}, "screen"}}},
           Row{"not a number",
               [](Scene& s) { s.floating->setCenter({std::numeric_limits<double>::quiet_NaN(), 150}); },
               {{{160, 110}, "screen"}}},
           Row{"scrolled",
               [](Scene& s) { s.floating->setBounds({{0, 60}, {100, 100}}); },
               {{{160, 95}, "screen"}, {{160, 105}, "floating"}}},
           Row{"a window that listens",
               [](Scene& s) { s.window->addGestureRecognizer(UIPanGestureRecognizer::create({})); },
               {{{10, 500}, "window"}, {{10, 900}, "none"}}},
       }) {
    Scene scene;
    row.change(scene);
    for (const auto& [point, expected] : row.expected) {
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
  scene.window->setFrame({{30, 30}, {400, 800}});
  EXPECT_EQ(scene.screen->convertPoint({1, 2}, nullptr), (CGPoint{1, 2})) << "where the window lies does not matter";
  scene.floating->setTransform(CGAffineTransform::makeScale(0, 0));
  EXPECT_EQ(scene.floating->convertPointFrom({3, 3}, nullptr), (CGPoint{50, 50}));
}

}  // namespace
}  // namespace corvane
