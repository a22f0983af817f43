#include "corvane/platform/views/ui_stack_view.h"

#include <gmock/gmock.h>

#include "corvane/platform/views/ui_button.h"
#include "corvane/platform/views/ui_image_view.h"
#include "corvane/platform/views/ui_label.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using testing::ElementsAre;

/// Without a toolkit every letter is half as wide as the font is high, and a line a quarter higher than that.
class StackViewTest : public HeadlessTest {
 protected:
  static std::shared_ptr<UIView> picture(CGSize size) { return UIImageView::create("picture.png", size); }
  static std::vector<CGRect> framesIn(const UIView& view) {
    std::vector<CGRect> frames;
    for (const auto& subview : view.subviews()) frames.push_back(subview->frame());
    return frames;
  }
  void show(const std::shared_ptr<UIView>& view, CGSize size) {
    window_->addSubview(view);
    view->setFrame({{}, size});
    window_->layoutIfNeeded();
  }

  std::shared_ptr<UIWindow> window_ = UIWindow::create({{}, {400, 800}});
};

TEST_F(StackViewTest, ARowGivesEachWhatFitsItAndSpacersTheRest) {
  const auto row =
      UIStackView::create(StackAxis::horizontal, {.spacing = 10, .margin = 5, .alignment = StackAlignment::center});
  const auto absent = picture({50, 50});
  absent->setHidden(true);
  for (const auto& view :
       {picture({40, 20}), absent, std::shared_ptr<UIView>(UISpacerView::create()), picture({60, 90})}) {
    row->addSubview(view);
  }
  show(row, {300, 100});
  EXPECT_THAT(framesIn(*row), ElementsAre(CGRect{{5, 40}, {40, 20}}, CGRect{{0, 0}, {50, 50}},
                                          CGRect{{55, 50}, {170, 0}}, CGRect{{235, 5}, {60, 90}}));
  EXPECT_EQ(row->sizeThatFits({300, 100}), (CGSize{130, 100}));

  row->setStyle({.spacing = 0, .alignment = StackAlignment::fill});
  absent->setHidden(false);
  window_->layoutIfNeeded();
  EXPECT_THAT(framesIn(*row), ElementsAre(CGRect{{0, 0}, {40, 100}}, CGRect{{40, 0}, {50, 100}},
                                          CGRect{{90, 0}, {150, 100}}, CGRect{{240, 0}, {60, 100}}));
}

TEST_F(StackViewTest, WhereThereIsTooLittleRoomTheLargestGiveWayAndTextsBreakTheirLines) {
  const auto row = UIStackView::create(StackAxis::horizontal, {.spacing = 0});
  const auto text = UILabel::create("twenty letters, six!");
  text->setFont({.size = 10});
  row->addSubview(picture({40, 10}));
  row->addSubview(text);
  show(row, {100, 100});
  EXPECT_THAT(framesIn(*row), ElementsAre(CGRect{{0, 0}, {40, 10}}, CGRect{{40, 0}, {60, 39}}));
  show(row, {200, 100});
  EXPECT_EQ(text->frame(), (CGRect{{40, 0}, {100, 13}}));
  show(row, {10, 100});
  for (const CGRect& frame : framesIn(*row)) EXPECT_EQ(frame.size.width, 5);
}

TEST_F(StackViewTest, WhatChangesInsideMovesWhatIsAround) {
  const auto column = UIStackView::create(StackAxis::vertical, {.spacing = 1});
  const auto row = UIStackView::create(StackAxis::horizontal, {.spacing = 1});
  const auto label = UILabel::create("ab");
  label->setFont({.size = 10});
  const auto below = picture({10, 10});
  row->addSubview(label);
  column->addSubview(row);
  column->addSubview(below);
  show(column, {100, 100});
  EXPECT_EQ(below->frame().minY(), 14);
  label->setText("a\nb");
  window_->layoutIfNeeded();
  EXPECT_EQ(below->frame().minY(), 27);
  label->removeFromSuperview();
  row->addSubview(picture({5, 30}));
  window_->layoutIfNeeded();
  EXPECT_EQ(below->frame().minY(), 31);
  row->setHidden(true);
  window_->layoutIfNeeded();
  EXPECT_EQ(below->frame().minY(), 0);
}

TEST_F(StackViewTest, AButtonCallsItsNewestActionWhileItIsEnabled) {
  std::string called;
  const auto button = UIButton::create("Go", [&] { called += "first "; });
  show(button, button->sizeThatFits({400, 800}));
  EXPECT_EQ(button->bounds().size, (CGSize{15 + 28, 40})) << "a finger can hit it";
  const auto tap = [&] {
    for (const TouchPhase phase : {TouchPhase::began, TouchPhase::ended}) {
      window_->sendTouch({.identifier = 1, .phase = phase, .location = {20, 20}});
    }
  };
  tap();
  button->setAction([&] {
    called += "second ";
    button->setAction({});
  });
  button->setEnabled(false);
  tap();
  EXPECT_EQ(called, "first ");
  button->setEnabled(true);
  tap();
  tap();
  EXPECT_EQ(called, "first second ");
}

}  // namespace
}  // namespace corvane
