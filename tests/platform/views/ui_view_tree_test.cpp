#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "corvane/platform/views/ui_window.h"

namespace corvane {
namespace {

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

TEST(UIView, SubviewsGoInAtAnyPlace) {
  const auto parent = UIView::create();
  const auto a = UIView::create();
  const auto b = UIView::create();
  const auto c = UIView::create();
  parent->insertSubview(a, 5);
  parent->insertSubview(b, 0);
  parent->insertSubview(c, 1);
  EXPECT_THAT(parent->subviews(), ElementsAre(b, c, a));
  parent->insertSubview(b, 2);
  EXPECT_THAT(parent->subviews(), ElementsAre(c, a, b));
}

}  // namespace
}  // namespace corvane
