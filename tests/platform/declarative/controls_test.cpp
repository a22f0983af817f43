#include "corvane/platform/declarative/controls.h"

#include <gmock/gmock.h>

#include "corvane/platform/declarative/box.h"
#include "corvane/platform/declarative/conditional_view.h"
#include "corvane/platform/declarative/observable_object.h"
#include "corvane/platform/declarative/stack.h"
#include "corvane/platform/declarative/view_mount.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

struct Basket : ObservableObject {
  Published<int> count{*this};
};

struct BasketScreen {
  Basket* basket;
  auto body() const {
    const int count = basket->count.value();
    return VStack({.spacing = 0, .alignment = StackAlignment::fill},
                  when(count > 1, [] { return Text("More than one"); }),
                  HStack({.spacing = 0}, Image("shirt.png", {30, 30}), Spacer{},
                         Text(std::to_string(count)).font({.size = 20}).color({.red = 1})) |
                      box({.backgroundColor = UIColor{.green = 1}}),
                  Button("Add", [basket = basket, count] { basket->count.set(count + 1); }).enabled(count < 3));
  }
};

TEST(Controls, ValuesChangeInPlaceAndThePlaceFollows) {
  const auto backend = headless::Backend::install().value();
  const auto window = UIWindow::create({{}, {300, 400}});
  Basket basket;
  const auto mount = ViewMount::create(*window);
  mount->show(BasketScreen{&basket});
  const auto settle = [&] {
    backend->runLoop().runUntilIdle();
    window->layoutIfNeeded();
  };
  settle();
  const auto column = mount->view()->subviews().front();
  const auto box = column->subviews()[0];
  const auto number = std::dynamic_pointer_cast<UILabel>(box->subviews()[0]->subviews()[2]);
  const auto button = std::dynamic_pointer_cast<UIButton>(column->subviews()[1]);
  EXPECT_EQ(box->frame(), (CGRect{{0, 0}, {300, 30}}));
  EXPECT_EQ(number->frame(), (CGRect{{290, 0}, {10, 25}}));
  EXPECT_EQ(button->frame(), (CGRect{{0, 30}, {300, 40}}));

  const auto tap = [&] {
    const CGPoint middle = button->center();
    for (const TouchPhase phase : {TouchPhase::began, TouchPhase::ended}) {
      window->sendTouch({.identifier = 1, .phase = phase, .location = middle});
    }
    settle();
  };
  for (int taps = 0; taps < 5; ++taps) tap();
  EXPECT_EQ(basket.count.value(), 3) << "disabled from here on";
  EXPECT_FALSE(button->isEnabled());
  EXPECT_EQ(number->text(), "3");
  ASSERT_EQ(column->subviews().size(), 3U);
  EXPECT_EQ(column->subviews()[1], box) << "nothing was made anew";
  EXPECT_EQ(box->frame().minY(), 19) << "below the text that has come";
  mount->remove();
}

}  // namespace
}  // namespace corvane
