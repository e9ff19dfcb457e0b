// Costs at growing sizes.
#include <gtest/gtest.h>

#include "bench/figures/growth.h"

namespace kavo::bench {
namespace {

std::vector<Figure> costs(const std::vector<double>& values) {
  std::vector<Figure> figures;
  for (const double value : values)
    figures.push_back({"bench_a", "sum", value, "ns", "", 0, std::nullopt});
  return figures;
}

TEST(Growth, MeasuresEachCostAgainstTheOneBeforeGrownAsTheSize) {
  const std::vector<Figure> figures = growth(costs({10, 25, 90}), {1, 3, 12});
  EXPECT_DOUBLE_EQ(figures[1].peer_value, 30);
  EXPECT_DOUBLE_EQ(figures[2].peer_value, 100);
  EXPECT_EQ(figures[1].peer, "3.00 times the one before");
}

TEST(Growth, ReachesWhenItIsLinear) {
  const std::vector<Figure> figures = growth(costs({10, 30}), {1, 3});
  EXPECT_TRUE(reaches(figures[1]));
}

TEST(Growth, FallsShortWhenItIsQuadratic) {
  const std::vector<Figure> figures = growth(costs({10, 40}), {1, 2});
  EXPECT_FALSE(reaches(figures[1]));
  EXPECT_TRUE(falls_short(figures[1]));
}

TEST(Growth, ForgivesATenth) {
  EXPECT_FALSE(falls_short(growth(costs({10, 21.9}), {1, 2})[1]));
  EXPECT_TRUE(falls_short(growth(costs({10, 22.1}), {1, 2})[1]));
}

TEST(Growth, LeavesTheFirstCostAsItIs) {
  std::vector<Figure> figures = costs({10, 20});
  figures[0].bound = at_most(5);
  figures = growth(figures, {1, 2});
  EXPECT_FALSE(figures[0].is_ratio());
  EXPECT_FALSE(reaches(figures[0]));
}

TEST(Growth, IsNotJudgedBehindASizeOfZero) {
  const std::vector<Figure> figures = growth(costs({10, 400, 800}), {0, 75, 150});
  EXPECT_FALSE(figures[1].is_ratio());
  EXPECT_DOUBLE_EQ(figures[2].peer_value, 800);
}

TEST(Growth, OfNothingIsNothing) {
  EXPECT_TRUE(growth({}, {}).empty());
}

} // namespace
} // namespace kavo::bench
