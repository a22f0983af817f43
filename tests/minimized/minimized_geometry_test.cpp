#include "corvane/minimized/minimized_geometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace corvane {
namespace {

constexpr CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
constexpr CGFloat infinity = std::numeric_limits<CGFloat>::infinity();

TEST(MinimizedGeometry, SizesAndScales) {
  struct Row {
    CGSize original;
    std::optional<CGSize> wanted;
    CGSize size;
    CGSize scale;
  };
  for (const Row& row : {
           Row{{300, 600}, std::nullopt, {99, 198}, {0.33, 0.33}},
           Row{{60, 600}, std::nullopt, {30, 198}, {0.33, 0.33}},
           Row{{600, 60}, std::nullopt, {198, 30}, {0.33, 0.33}},
           Row{{0, 0}, std::nullopt, {30, 30}, {0.33, 0.33}},
           Row{{240, 800}, CGSize{120, 200}, {120, 200}, {0.5, 0.25}},
           Row{{100, 100}, CGSize{200, 300}, {200, 300}, {2, 3}},
           Row{{0, 800}, CGSize{120, 200}, {120, 200}, {1, 0.25}},
           Row{{240, 0}, CGSize{120, 200}, {120, 200}, {0.5, 1}},
           Row{{1e-320, infinity}, CGSize{120, 200}, {120, 200}, {1, 1}},
           Row{{nan, infinity}, std::nullopt, {30, 30}, {0.33, 0.33}},
       }) {
    const MinimizedShape shape = minimizedShape({{7, 8}, row.original}, row.wanted);
    EXPECT_DOUBLE_EQ(shape.size.width, row.size.width);
    EXPECT_DOUBLE_EQ(shape.size.height, row.size.height);
    EXPECT_EQ(shape.transform, CGAffineTransform::makeScale(row.scale.width, row.scale.height));
  }
}

TEST(MinimizedGeometry, NoWantedLengthIsBelowThirty) {
  EXPECT_EQ(atLeastMinimizedSize({10, 100}), (CGSize{30, 100}));
  EXPECT_EQ(atLeastMinimizedSize({30, 29.999}), (CGSize{30, 30}));
  EXPECT_EQ(atLeastMinimizedSize({-5, nan}), (CGSize{30, 30}));
  EXPECT_EQ(atLeastMinimizedSize({infinity, -infinity}), (CGSize{30, 30}));
}

TEST(MinimizedGeometry, PlacesInAContainer) {
  struct Row {
    MinimizedOrigin origin;
    CGPoint place;
  };
  for (const Row& row : {
           Row{MinimizedOrigin::topLeft(), {5, 5}},
           Row{MinimizedOrigin::topRight(), {286, 5}},
           Row{MinimizedOrigin::bottomLeft(), {5, 641}},
           Row{MinimizedOrigin::bottomRight(), {286, 641}},
           Row{MinimizedOrigin::custom({100, 200}), {100, 200}},
           Row{MinimizedOrigin::custom({-20, 2000}), {0, 844}},
           Row{MinimizedOrigin::custom({391, -0.5}), {390, 0}},
           Row{MinimizedOrigin::custom({nan, infinity}), {0, 844}},
       }) {
    EXPECT_EQ(minimizedPosition(row.origin, {99, 198}, CGSize{390, 844}), row.place);
    EXPECT_EQ(minimizedPosition(row.origin, {99, 198}, std::nullopt), (CGPoint{5, 5}));
  }
}

TEST(MinimizedGeometry, SnapsToTheNearerSideAndStaysInside) {
  constexpr CGSize container{400, 800};
  const auto snap = [&](CGPoint center, CGSize size) {
    const CGRect frame{{center.x - size.width / 2, center.y - size.height / 2}, size};
    const SnapTarget target = snapTarget(frame, center.y, container);
    return CGPoint{snappedCenterX(target.side, size.width, container.width), target.centerY};
  };
  EXPECT_EQ(snap({200, 300}, {100, 200}), (CGPoint{350, 300})) << "just in the middle goes right";
  EXPECT_EQ(snap({199, 300}, {100, 200}), (CGPoint{50, 300}));
  EXPECT_EQ(snap({-500, 10}, {100, 200}), (CGPoint{50, 100}));
  EXPECT_EQ(snap({900, 795}, {100, 200}), (CGPoint{350, 700}));
  EXPECT_EQ(snap({10, 100}, {100, 200}), (CGPoint{50, 100}));
  EXPECT_EQ(snap({10, 700}, {100, 200}), (CGPoint{50, 700}));
  EXPECT_EQ(snap({10, 500}, {100, 1000}), (CGPoint{50, 300})) << "too high for its container, it keeps its bottom";
}

}  // namespace
}  // namespace corvane
