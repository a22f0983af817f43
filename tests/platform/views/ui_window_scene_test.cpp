#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane {
namespace {

using testing::ElementsAre;

TEST(UIWindowScene, ListsItsWindowsInOrderAndHasOneKeyWindow) {
  const auto scene = UIWindowScene::create();
  const auto first = UIWindow::create();
  auto second = UIWindow::create();
  const auto other = UIWindow::create();
  other->makeKey();
  first->setWindowScene(scene);
  second->setWindowScene(scene);
  EXPECT_THAT(scene->windows(), ElementsAre(first, second));
  EXPECT_FALSE(first->isKeyWindow());
  first->makeKey();
  second->makeKey();
  EXPECT_FALSE(first->isKeyWindow());
  EXPECT_TRUE(second->isKeyWindow());
  EXPECT_TRUE(other->isKeyWindow()) << "it is in no scene";
  other->setWindowScene(scene);
  EXPECT_FALSE(other->isKeyWindow()) << "the scene has a key window";

  second.reset();
  EXPECT_THAT(scene->windows(), ElementsAre(first, other));
  const auto next = UIWindowScene::create();
  first->setWindowScene(next);
  EXPECT_THAT(scene->windows(), ElementsAre(other));
  EXPECT_EQ(first->windowScene(), next);
}

}  // namespace
}  // namespace corvane
