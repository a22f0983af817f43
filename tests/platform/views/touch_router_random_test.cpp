#include <gtest/gtest.h>

#include <random>

#include "tests/support/touch_storm.h"

namespace corvane {
namespace {

TEST(TouchRouter, NoStormOfTouchesLeavesARecognizerStuck) {
  int actions = 0;
  for (std::uint32_t seed = 0; seed < 2000; ++seed) {
    std::mt19937 random(seed);
    TouchStorm storm([&] { return static_cast<std::uint8_t>(random()); });
    for (int i = 0; i < 150; ++i) storm.step();
    storm.finish();
    ASSERT_EQ(storm.complaint(), "") << "seed " << seed;
    actions += storm.actionCount();
  }
  EXPECT_GT(actions, 5'000) << "the storm hits nothing";
}

}  // namespace
}  // namespace corvane
