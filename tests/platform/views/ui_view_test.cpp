#include "corvane/platform/views/ui_view.h"

#include <gmock/gmock.h>

#include <cmath>
#include <functional>
#include <numbers>
#include <string>
#include <vector>

#include "corvane/platform/views/ui_window.h"

namespace corvane {
namespace {

using enum UIViewAutoresizing;
using testing::ElementsAre;
using testing::IsEmpty;

/// Writes down what it is told.
class Listener : public UIView {
 public:
  Listener(ConstructionKey key, std::string name, std::vector<std::string>& told)
      : UIView(key), name_(std::move(name)), told_(told) {}
  static std::shared_ptr<Listener> create(const std::string& name, std::vector<std::string>& told) {
    return std::make_shared<Listener>(ConstructionKey{}, name, told);
  }

 private:
  void layoutSubviews() override { told_.push_back(name_ + " layout"); }
  void didMoveToSuperview() override { told_.push_back(name_ + (superview() ? " in" : " out")); }
  void didMoveToWindow() override { told_.push_back(name_ + (window() ? " on screen" : " off screen")); }

  std::string name_;
  std::vector<std::string>& told_;
};

TEST(UIView, FrameFollowsBoundsCentreAndTransform) {
  const auto view = UIView::create({{10, 20}, {100, 200}});
  EXPECT_EQ(view->center(), (CGPoint{60, 120}));
  EXPECT_TRUE(UIColor().alpha == 1 && UIViewPresentation().alpha == 1);
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
  view->setFrame({{0, 0}, {10, 200}});
  EXPECT_NEAR(view->bounds().size.height, 40, 1e-9) << "nor that one";
  view->setTransform({.a = 0, .b = -1, .c = 1, .d = 0});
  view->setFrame({{5, 6}, {0, 30}});
  EXPECT_EQ(view->bounds().size, (CGSize{30, 0})) << "a quarter of a turn";
  EXPECT_EQ(view->frame(), (CGRect{{5, 6}, {0, 30}}));
  view->setFrame({{5, 6}, {30, 0}});
  EXPECT_EQ(view->bounds().size, (CGSize{0, 30}));
}

TEST(UIView, FlexibleLengthsShareTheGrowthOfTheSuperview) {
  struct Row {
    UIViewAutoresizing mask;
    CGRect expected;
  };
  for (const Row& row : {
           Row{none, {{10, 20}, {50, 60}}},
           Row{flexibleWidth | flexibleHeight, {{10, 20}, {150, 165}}},
           Row{flexibleLeftMargin | flexibleTopMargin, {{110, 125}, {50, 60}}},
           Row{flexibleRightMargin | flexibleBottomMargin, {{10, 20}, {50, 60}}},
           Row{flexibleLeftMargin | flexibleWidth | flexibleRightMargin, {{20, 20}, {100, 60}}},
           Row{flexibleTopMargin | flexibleBottomMargin, {{10, 80}, {50, 60}}},
       }) {
    const auto parent = UIView::create({{0, 0}, {100, 95}});
    const auto child = UIView::create({{10, 20}, {50, 60}});
    child->setAutoresizingMask(row.mask);
    parent->addSubview(child);
    parent->setFrame({{7, 7}, {200, 200}});
    EXPECT_EQ(child->frame(), row.expected) << static_cast<int>(row.mask);
    parent->setFrame({{7, 7}, {20, 20}});
    EXPECT_TRUE(child->frame().size.width >= 0 && child->frame().size.height >= 0);
    parent->setFrame({{7, 7}, {0, 0}});
    parent->setFrame({{7, 7}, {200, 200}});
    EXPECT_EQ(child->frame(), row.expected) << "turned back";
    const auto other = UIView::create({{0, 0}, {300, 300}});
    other->addSubview(child);
    other->setFrame({{0, 0}, {310, 300}});
    const CGRect anew = autoresizedFrame(row.expected, row.mask, {300, 300}, {310, 300});
    EXPECT_NEAR(child->frame().maxX(), anew.maxX(), 1e-9);
  }
}

TEST(UIView, SubviewsHaveAPlaceInOneSuperviewAndEndWithIt) {
  auto parent = UIView::create();
  const auto a = UIView::create();
  const auto b = UIView::create();
  const auto c = UIView::create();
  parent->insertSubview(a, 5);
  parent->insertSubview(b, 0);
  parent->insertSubview(c, 1);
  EXPECT_THAT(parent->subviews(), ElementsAre(b, c, a));
  parent->insertSubview(b, 2);
  EXPECT_THAT(parent->subviews(), ElementsAre(c, a, b));
  parent->bringSubviewToFront(c);
  EXPECT_THAT(parent->subviews(), ElementsAre(a, b, c));
  a->addSubview(c);
  EXPECT_EQ(c->superview(), a);
  parent->bringSubviewToFront(c);
  EXPECT_THAT(parent->subviews(), ElementsAre(a, b)) << "it is no subview any more";
  const std::weak_ptr<UIView> owned = [&] {
    const auto view = UIView::create();
    parent->addSubview(view);
    return view;
  }();
  parent.reset();
  EXPECT_TRUE(owned.expired());
  EXPECT_EQ(a->superview(), nullptr);
}

TEST(UIView, IsLaidOutWhenItNeedsToBeAndOnce) {
  std::vector<std::string> told;
  const auto parent = Listener::create("parent", told);
  const auto child = Listener::create("child", told);
  parent->addSubview(child);
  const auto layOut = [&] {
    told.clear();
    parent->layoutIfNeeded();
    return told;
  };
  EXPECT_THAT(layOut(), ElementsAre("parent layout", "child layout"));
  EXPECT_THAT(layOut(), IsEmpty());
  child->setBounds({{0, 0}, {1, 1}});
  EXPECT_THAT(layOut(), ElementsAre("child layout"));
  child->setCenter({9, 9});
  child->setBounds({{5, 5}, {1, 1}});
  EXPECT_THAT(layOut(), IsEmpty()) << "neither changes the size";
  child->removeFromSuperview();
  child->setNeedsLayout();
  EXPECT_THAT(layOut(), ElementsAre("parent layout"));
  parent->addSubview(child);
  EXPECT_THAT(layOut(), ElementsAre("parent layout", "child layout"));
  parent->setNeedsLayout();
  child->layoutIfNeeded();
  EXPECT_THAT(layOut(), ElementsAre("parent layout"));
}

TEST(UIView, IsToldWhereItHasMovedTo) {
  std::vector<std::string> told;
  const auto outer = Listener::create("outer", told);
  const auto inner = Listener::create("inner", told);
  const auto window = UIWindow::create();
  const auto elsewhere = UIView::create();
  window->addSubview(elsewhere);
  outer->addSubview(inner);
  window->addSubview(outer);
  EXPECT_THAT(std::exchange(told, {}), ElementsAre("inner in", "outer in", "outer on screen", "inner on screen"));
  elsewhere->addSubview(outer);
  EXPECT_THAT(std::exchange(told, {}), ElementsAre("outer in")) << "the window is the same";
  elsewhere->removeFromSuperview();
  EXPECT_THAT(std::exchange(told, {}), ElementsAre("outer off screen", "inner off screen"));
}

TEST(UIWindow, TellsItsHostOfEveryChangeInsideIt) {
  class Host : public UIWindowDelegate {
   public:
    void viewTreeDidChange() override { ++changes; }
    int changes = 0;
  };
  const auto host = std::make_shared<Host>();
  const auto window = UIWindow::create();
  window->setDelegate(host);
  const auto view = UIView::create();
  view->setCenter({1, 1});
  EXPECT_EQ(host->changes, 0) << "outside of the window";
  const auto other = UIView::create();
  window->addSubview(other);
  const std::vector<std::function<void()>> changes{
      [&] { window->addSubview(view); },
      [&] { window->bringSubviewToFront(other); },
      [&] { view->setFrame({{1, 1}, {0, 0}}); },
      [&] { view->setBounds({{3, 3}, {0, 0}}); },
      [&] { view->setCenter({2, 2}); },
      [&] { view->setTransform(CGAffineTransform::makeScale(2, 2)); },
      [&] { view->setHidden(true); },
      [&] { view->setAlpha(0.5); },
      [&] { view->setCornerRadius(2); },
      [&] { view->setClipsToBounds(true); },
      [&] { view->setBackgroundColor(UIColor{.red = 1}); },
      [&] { view->setUserInteractionEnabled(false); },
      [&] { view->setNeedsLayout(); },
      [&] { view->removeFromSuperview(); },
  };
  for (std::size_t index = 0; index < changes.size(); ++index) {
    host->changes = 0;
    changes[index]();
    EXPECT_GE(host->changes, 1) << "change " << index;
  }
}

}  // namespace
}  // namespace corvane
