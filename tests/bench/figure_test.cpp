// The verdict on one figure.
#include <gtest/gtest.h>

#include <limits>

#include "bench/figures/figure.h"

namespace kavo::bench {
namespace {

Figure beside(double value, double peer_value, Bound bound) {
  return {"bench_a", "sum", value, "ns", "loop", peer_value, bound};
}

Figure alone(double value, Bound bound) {
  return {"bench_a", "sum", value, "ns", "", 0, bound};
}

TEST(Figure, IsAMultipleOfThePeersUnderAnUpperBound) {
  EXPECT_DOUBLE_EQ(ratio(beside(300, 200, at_most(2))), 1.5);
}

TEST(Figure, SaysHowManyTimesAsFastItIsUnderALowerBound) {
  EXPECT_DOUBLE_EQ(ratio(beside(100, 400, at_least(3))), 4);
}

TEST(Figure, ReachesABoundThatItTouches) {
  EXPECT_TRUE(reaches(beside(400, 200, at_most(2))));
  EXPECT_TRUE(reaches(beside(100, 300, at_least(3))));
  EXPECT_TRUE(reaches(alone(60, at_most(60))));
  EXPECT_TRUE(reaches(alone(60, at_least(60))));
}

TEST(Figure, ReachesNoBoundThatItMisses) {
  EXPECT_FALSE(reaches(beside(401, 200, at_most(2))));
  EXPECT_FALSE(reaches(beside(100, 299, at_least(3))));
  EXPECT_FALSE(reaches(alone(61, at_most(60))));
  EXPECT_FALSE(reaches(alone(59, at_least(60))));
}

TEST(Figure, WithoutABoundReachesAlways) {
  const Figure figure = {"bench_a", "sum", 1e9, "ns", "loop", 1, std::nullopt};
  EXPECT_TRUE(reaches(figure));
  EXPECT_FALSE(falls_short(figure));
}

TEST(Figure, FallsShortWhenItsRatioMissesByMoreThanATenth) {
  EXPECT_TRUE(falls_short(beside(221, 100, at_most(2))));
  EXPECT_TRUE(falls_short(beside(100, 179, at_least(2))));
}

TEST(Figure, DoesNotFallShortWhenItsRatioMissesByLess) {
  EXPECT_FALSE(falls_short(beside(219, 100, at_most(2))));
  EXPECT_FALSE(falls_short(beside(100, 181, at_least(2))));
}

TEST(Figure, NeverFallsShortByATimeAlone) {
  EXPECT_FALSE(falls_short(alone(1e9, at_most(60))));
  EXPECT_FALSE(falls_short(alone(0, at_least(60))));
}

TEST(Figure, FallsShortWhenItsRatioIsNoNumber) {
  EXPECT_TRUE(falls_short(beside(0, 0, at_most(2))));
  EXPECT_TRUE(falls_short(beside(std::numeric_limits<double>::quiet_NaN(), 1, at_least(2))));
  EXPECT_FALSE(reaches(beside(0, 0, at_most(2))));
}

} // namespace
} // namespace kavo::bench
