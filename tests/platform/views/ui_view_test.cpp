#include "corvane/platform/views/ui_view.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "corvane/platform/views/ui_window.h"

namespace corvane {
namespace {

using enum UIViewAutoresizing;

TEST(UIView, FrameFollowsBoundsCentreAndTransform) {
  const auto view = UIView::create({{10, 20}, {100, 200}});
  EXPECT_EQ(view->center(), (CGPoint{60, 120}));
  view->setTransform(CGAffineTransform::makeScale(0.5, 0.25));
  EXPECT_EQ(view->frame(), (CGRect{{35, 95}, {50, 50}}));
  EXPECT_EQ(view->bounds(), (CGRect{{0, 0}, {100, 200}}));

  view->setFrame({{0, 0}, {60, 60}});
  EXPECT_EQ(view->frame(), (CGRect{{0, 0}, {60, 60}}));
  EXPECT_EQ(view->bounds().size, (CGSize{120, 240})) << "the transform turns these into the frame";

  view->setTransform(CGAffineTransform::makeScale(0, 1));
  view->setFrame({{0, 0}, {10, 10}});
  EXPECT_EQ(view->bounds().size, (CGSize{120, 240})) << "nothing scaled by zero has this frame";
}

TEST(UIView, FrameOfARotatedViewIsItsBoundingBox) {
  const auto view = UIView::create({{0, 0}, {100, 40}});
  const double angle = std::numbers::pi / 6;
  view->setTransform({.a = std::cos(angle), .b = std::sin(angle), .c = -std::sin(angle), .d = std::cos(angle)});
  const CGRect frame = view->frame();
  EXPECT_NEAR(frame.size.width, 100 * std::cos(angle) + 40 * std::sin(angle), 1e-9);
  view->setFrame(frame);
  EXPECT_NEAR(view->bounds().size.width, 100, 1e-9);
  EXPECT_NEAR(view->bounds().size.height, 40, 1e-9);
  view->setFrame({{0, 0}, {200, 10}});
  EXPECT_NEAR(view->bounds().size.width, 100, 1e-9) << "no size has this box at this angle";

  const double eighth = std::numbers::pi / 4;
  view->setTransform({.a = std::cos(eighth), .b = std::sin(eighth), .c = -std::sin(eighth), .d = std::cos(eighth)});
  view->setFrame({{0, 0}, {100, 40}});
  EXPECT_NEAR(view->bounds().size.width, 100, 1e-9);
}

TEST(UIView, PointsMapToTheSuperviewThroughBoundsOriginAndTransform) {
  const auto view = UIView::create({{10, 10}, {100, 100}});
  view->setBounds({{5, 0}, {100, 100}});
  view->setTransform(CGAffineTransform::makeScale(2, 2));
  EXPECT_EQ(view->transformToSuperview().apply({55, 50}), (CGPoint{60, 60})) << "the centre stays";
  EXPECT_EQ(view->transformToSuperview().apply({56, 51}), (CGPoint{62, 62}));
}

TEST(UIView, FlexibleLengthsShareTheGrowthOfTheSuperview) {
  struct Row {
    UIViewAutoresizing mask;
    CGRect expected;
  };
  for (const Row& row : {
           Row{none, {{10, 20}, {50, 60}}},
           Row{flexibleWidth | flexibleHeight, {{10, 20}, {150, 160}}},
           Row{flexibleLeftMargin | flexibleTopMargin, {{110, 120}, {50, 60}}},
           Row{flexibleRightMargin | flexibleBottomMargin, {{10, 20}, {50, 60}}},
           Row{flexibleLeftMargin | flexibleWidth | flexibleRightMargin, {{20, 20}, {100, 60}}},
       }) {
    const auto parent = UIView::create({{0, 0}, {100, 100}});
    const auto child = UIView::create({{10, 20}, {50, 60}});
    child->setAutoresizingMask(row.mask);
    parent->addSubview(child);
    parent->setFrame({{7, 7}, {200, 200}});
    EXPECT_EQ(child->frame(), row.expected) << static_cast<int>(row.mask);
  }
}

TEST(UIView, AViewMadeInAnEmptySuperviewFillsIt) {
  const auto parent = UIView::create();
  const auto child = UIView::create();
  child->setAutoresizingMask(flexibleWidth | flexibleHeight);
  parent->addSubview(child);
  parent->setFrame({{0, 0}, {390, 844}});
  EXPECT_EQ(child->frame(), (CGRect{{0, 0}, {390, 844}}));
  parent->setBounds({{0, 0}, {844, 390}});
  EXPECT_EQ(child->frame(), (CGRect{{0, 0}, {844, 390}}));
}

TEST(UIView, ASubviewMayLeaveWhileItIsResized) {
  class Leaver : public UIView {
   public:
    using UIView::UIView;
    static std::shared_ptr<Leaver> create() { return std::make_shared<Leaver>(ConstructionKey{}); }
    void setFrame(CGRect) override { removeFromSuperview(); }
  };
  const auto parent = UIView::create();
  for (int i = 0; i < 3; ++i) {
    const auto child = Leaver::create();
    child->setAutoresizingMask(flexibleWidth);
    parent->addSubview(child);
  }
  parent->setFrame({{0, 0}, {10, 10}});
  EXPECT_TRUE(parent->subviews().empty());
}

TEST(UIView, SubviewsMoveBetweenSuperviewsAndKeepTheirOrder) {
  const auto window = UIWindow::create();
  const auto first = UIView::create();
  const auto second = UIView::create();
  const auto child = UIView::create();
  window->addSubview(first);
  window->addSubview(second);
  first->addSubview(child);
  second->addSubview(child);
  EXPECT_TRUE(first->subviews().empty());
  EXPECT_EQ(child->superview(), second);
  EXPECT_EQ(child->window(), window);
  window->bringSubviewToFront(first);
  EXPECT_EQ(window->subviews().back(), first);
  window->bringSubviewToFront(child);
  EXPECT_EQ(window->subviews().back(), first) << "the child is no subview of the window";
  second->removeFromSuperview();
  EXPECT_EQ(child->window(), nullptr);
}

TEST(UIView, SubviewsEndWithTheirSuperview) {
  auto parent = UIView::create();
  const auto kept = UIView::create();
  std::weak_ptr<UIView> dropped;
  {
    const auto child = UIView::create();
    dropped = child;
    parent->addSubview(child);
  }
  parent->addSubview(kept);
  parent.reset();
  EXPECT_TRUE(dropped.expired());
  EXPECT_EQ(kept->superview(), nullptr);
}

TEST(UIWindow, TellsItsHostOfEveryChangeInsideIt) {
  class Host : public UIWindowHost {
   public:
    void viewTreeDidChange() override { ++changes; }
    int changes = 0;
  };
  const auto host = std::make_shared<Host>();
  const auto window = UIWindow::create();
  window->setHost(host);
  const auto view = UIView::create();
  view->setCenter({1, 1});
  EXPECT_EQ(host->changes, 0) << "outside of the window";
  const auto other = UIView::create();
  window->addSubview(other);
  const auto expectChange = [&](auto change, const char* what) {
    host->changes = 0;
    change();
    EXPECT_GE(host->changes, 1) << what;
  };
  expectChange([&] { window->addSubview(view); }, "addSubview");
  expectChange([&] { window->bringSubviewToFront(other); }, "bringSubviewToFront");
  expectChange([&] { view->setFrame({{1, 1}, {1, 1}}); }, "frame");
  expectChange([&] { view->setBounds({{0, 0}, {2, 2}}); }, "bounds");
  expectChange([&] { view->setCenter({2, 2}); }, "center");
  expectChange([&] { view->setTransform(CGAffineTransform::makeScale(2, 2)); }, "transform");
  expectChange([&] { view->setHidden(true); }, "hidden");
  expectChange([&] { view->setAlpha(0.5); }, "alpha");
  expectChange([&] { view->setCornerRadius(2); }, "cornerRadius");
  expectChange([&] { view->setClipsToBounds(true); }, "clipsToBounds");
  expectChange([&] { view->setBackgroundColor(UIColor{.red = 1}); }, "backgroundColor");
  expectChange([&] { view->setNeedsLayout(); }, "needsLayout");
  expectChange([&] { view->removeFromSuperview(); }, "removeFromSuperview");
}

}  // namespace
}  // namespace corvane
