#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "corvane/platform/views/animation_curve.h"
#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using enum UIViewAnimationOptions;
using testing::ElementsAre;

class ViewAnimation : public HeadlessTest {
 protected:
  std::shared_ptr<UIView> view_ = UIView::create({{0, 0}, {100, 200}});
};

TEST(AnimationCurve, TakesItsNamedShape) {
  struct Row {
    UIViewAnimationOptions options;
    double quarter, half, threeQuarters;
  };
  for (const Row& row : {Row{curveLinear, 0.25, 0.5, 0.75}, Row{curveEaseInOut, 0.1292, 0.5, 0.8708},
                         Row{curveEaseIn, 0.0935, 0.3154, 0.6219}, Row{curveEaseOut, 0.3781, 0.6846, 0.9065}}) {
    const AnimationCurve curve(row.options);
    EXPECT_NEAR(curve.valueAt(0.25), row.quarter, 1e-3);
    EXPECT_NEAR(curve.valueAt(0.5), row.half, 1e-3);
    EXPECT_NEAR(curve.valueAt(0.75), row.threeQuarters, 1e-3);
    EXPECT_EQ(curve.valueAt(-1), 0);
    EXPECT_EQ(curve.valueAt(1), 1);
  }
}

TEST(AnimationCurve, SpringsSettleInTimeAndPassTheirTargetOnlyWhenTheyMay) {
  for (const auto duration : {100ms, 500ms, 60'000ms}) {
    for (const double velocity : {-20.0, -1.0, 0.0, 1.0, 30.0}) {
      for (const double damping : {0.0, 0.1, 0.5, 0.999999, 1.0, 2.0}) {
        const auto curve = AnimationCurve::spring(damping, velocity, duration);
        SCOPED_TRACE(testing::Message() << damping << " " << velocity << " " << duration.count());
        double highest = 0;
        for (int i = 0; i <= 1000; ++i) highest = std::max(highest, curve.valueAt(i / 1000.0));
        if (damping >= 1) {
          EXPECT_LE(highest, 1);
        } else if (damping <= 0.5) {
          EXPECT_GT(highest, 1.05);
        }
        EXPECT_NEAR(curve.valueAt(1 - 1e-9), 1, 0.0011);
        const double speed = curve.valueAt(1e-7) / 1e-7;
        EXPECT_NEAR(speed, velocity * std::chrono::duration<double>(duration).count(), 0.05 + std::abs(speed) * 0.01);
      }
    }
  }
  const auto half = [](double velocity) { return AnimationCurve::spring(1, velocity, 1s).valueAt(0.5); };
  EXPECT_EQ(half(HUGE_VAL), half(0)) << "no velocity that makes sense";
}

TEST_F(ViewAnimation, MovesWhatIsShownAndChangesTheViewAtOnce) {
  UIView::animate(UIViewAnimation{.duration = 200ms, .delay = 100ms, .options = curveLinear, .animations = [this] {
                                    view_->setTransform(CGAffineTransform::makeScale(0.5, 0.5));
                                    view_->setFrame({{10, 20}, {50, 100}});
                                    view_->setCornerRadius(14);
                                    view_->setAlpha(0.5);
                                  }});
  EXPECT_EQ(view_->frame(), (CGRect{{10, 20}, {50, 100}}));
  EXPECT_EQ(view_->bounds(), (CGRect{{0, 0}, {100, 200}})) << "the transform does the shrinking";
  struct Row {
    std::chrono::milliseconds wait;
    CGPoint center;
    double scale, radius, alpha;
  };
  for (const Row& row : {Row{0ms, {50, 100}, 1, 0, 1}, Row{100ms, {50, 100}, 1, 0, 1},
                         Row{50ms, {46.25, 92.5}, 0.875, 3.5, 0.875}, Row{100ms, {38.75, 77.5}, 0.625, 10.5, 0.625},
                         Row{50ms, {35, 70}, 0.5, 14, 0.5}, Row{1h, {35, 70}, 0.5, 14, 0.5}}) {
    loop().advance(row.wait);
    const UIViewPresentation shown = view_->presentation();
    EXPECT_EQ(shown, (UIViewPresentation{{{0, 0}, {100, 200}},
                                         row.center,
                                         CGAffineTransform::makeScale(row.scale, row.scale),
                                         row.radius,
                                         row.alpha}))
        << loop().now().count();
  }
  EXPECT_EQ(view_->presentation().transformToSuperview(), view_->transformToSuperview());
}

TEST_F(ViewAnimation, AChangeOutsideJumpsAndOneInAnotherBlockGoesOnFromWhatIsShown) {
  std::vector<std::string> told;
  const auto tell = [&](const char* name) {
    return
        [&told, name](bool finished) { told.push_back(std::string(name) + (finished ? " finished" : " cut short")); };
  };
  const auto moveTo = [this](CGFloat x) { return [this, x] { view_->setCenter({x, 0}); }; };
  view_->setCenter({0, 0});
  UIView::animate(
      UIViewAnimation{.duration = 1s, .options = curveLinear, .animations = moveTo(100), .completion = tell("first")});
  loop().advance(500ms);
  UIView::animate(
      UIViewAnimation{.duration = 1s, .options = curveLinear, .animations = moveTo(0), .completion = tell("back")});
  EXPECT_EQ(view_->presentation().center.x, 50);
  loop().advance(500ms);
  EXPECT_EQ(view_->presentation().center.x, 25);
  EXPECT_THAT(told, ElementsAre("first cut short"));
  view_->setCenter({0, 0});
  EXPECT_EQ(view_->presentation().center.x, 25) << "the view is there already";
  view_->setCenter({7, 0});
  EXPECT_EQ(view_->presentation().center.x, 7);
  loop().advance(1s);
  EXPECT_THAT(told, ElementsAre("first cut short", "back cut short"));

  UIView::animate(UIViewAnimation{
      .duration = 1s, .animations = [&] { moveTo(0)(), view_->setAlpha(0); }, .completion = tell("two")});
  view_->setCenter({9, 0});
  loop().advance(1s);
  view_->setAlpha(1);
  EXPECT_EQ(told.back(), "two finished") << "one of its changes came through";
}

TEST_F(ViewAnimation, CompletionsComeOnceAndOnTimeWhateverTheBlockDid) {
  std::vector<std::string> told;
  const auto tell = [&](const char* name) {
    return [&told, name, this](bool finished) {
      const auto time = std::chrono::duration_cast<std::chrono::milliseconds>(loop().now()).count();
      told.push_back(std::string(name) + "@" + std::to_string(time) + (finished ? "" : " cut short"));
    };
  };
  UIView::animate(250ms, [] {}, tell("nothing"));
  UIView::animate(0s, [this] { view_->setAlpha(0); }, tell("at once"));
  EXPECT_EQ(view_->presentation().alpha, 0);
  UIView::animate(UIViewAnimation{.duration = -1s, .delay = 100ms, .completion = tell("late")});
  UIView::animate(
      300ms,
      [&] {
        view_->setAlpha(1);
        UIView::animate(100ms, [this] { view_->setCenter({1, 1}); }, tell("inner"));
        view_->setCornerRadius(3);
      },
      tell("outer"));
  auto gone = UIView::create();
  for (const std::function<void()>& change : {std::function<void()>([&] { gone->setAlpha(0.5); }),
                                              {[&] { gone->setBounds({{1, 1}, {0, 0}}); }},
                                              {[&] { gone->setCenter({1, 1}); }},
                                              {[&] { gone->setTransform(CGAffineTransform::makeScale(2, 2)); }},
                                              {[&] { gone->setCornerRadius(1); }}}) {
    UIView::animate(400ms, change, tell("gone"));
  }
  gone.reset();
  EXPECT_TRUE(told.empty());
  loop().advance(99ms);
  EXPECT_THAT(told, ElementsAre("at once@0"));
  loop().advance(1s);
  const std::string cut = "gone@400 cut short";
  EXPECT_THAT(told,
              ElementsAre("at once@0", "late@100", "inner@100", "nothing@250", "outer@300", cut, cut, cut, cut, cut));
  EXPECT_FALSE(view_->hasAnimations());
}

TEST_F(ViewAnimation, ABlockThatThrowsLeavesNoAnimationBehind) {
  EXPECT_THROW(UIView::animate(1s, [] { throw std::runtime_error("no"); }), std::runtime_error);
  view_->setAlpha(0);
  EXPECT_EQ(view_->presentation().alpha, 0);
}

TEST_F(ViewAnimation, SubviewsThatFollowASizeAreAnimatedWithIt) {
  const auto child = UIView::create({{0, 0}, {100, 200}});
  const auto other = UIView::create();
  child->setAutoresizingMask(UIViewAutoresizing::flexibleWidth);
  view_->addSubview(child);
  UIView::animate(UIViewAnimation{
      .duration = 1s, .options = curveLinear, .animations = [this] { view_->setBounds({{4, 8}, {200, 400}}); }});
  loop().advance(500ms);
  EXPECT_EQ(child->presentation().bounds.size.width, 150);
  EXPECT_EQ(view_->presentation().bounds, (CGRect{{2, 4}, {150, 300}}));
  EXPECT_TRUE(child->hasAnimations());
  EXPECT_FALSE(other->hasAnimations());
  view_->setBounds({{0, 0}, {50, 200}});
  EXPECT_FALSE(view_->hasAnimations()) << "the change from outside has ended the child's as well";
  EXPECT_FALSE(child->hasAnimations());
  UIView::animate(1s, [&] { child->setCornerRadius(1); });
  EXPECT_TRUE(view_->hasAnimations());
}

}  // namespace
}  // namespace corvane
