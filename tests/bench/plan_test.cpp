// From what the benchmarks measured to figures.
#include <gtest/gtest.h>

#include "bench/figures/plan.h"

namespace kavo::bench {
namespace {

using Names = std::vector<std::string>;

Names whats(const std::vector<Figure>& figures) {
  Names names;
  for (const Figure& figure : figures)
    names.push_back(figure.what);
  return names;
}

TEST(Plan, MeasuresOursAgainstEachPeer) {
  Plan plan;
  plan.expect("sum/eigen", at_least(0.9));
  plan.expect("sum/loop", at_most(1.5));
  const auto figures =
      plan.figures("bench_a", {{{"sum/ours", 10}, {"sum/eigen", 12}, {"sum/loop", 8}}, {}});
  ASSERT_EQ(figures.size(), 2);
  EXPECT_EQ(figures[0].program, "bench_a");
  EXPECT_EQ(figures[0].what, "sum");
  EXPECT_EQ(figures[0].peer, "eigen");
  EXPECT_EQ(figures[0].value, 10);
  EXPECT_EQ(figures[0].peer_value, 12);
  EXPECT_EQ(figures[1].peer, "loop");
  EXPECT_EQ(figures[1].bound->limit, 1.5);
}

TEST(Plan, ShowsAPairThatNothingIsExpectedOf) {
  const auto figures = Plan().figures("bench_a", {{{"sum/ours", 10}, {"sum/eigen", 12}}, {}});
  ASSERT_EQ(figures.size(), 1);
  EXPECT_FALSE(figures[0].bound.has_value());
}

TEST(Plan, MakesNoFigureOfABenchmarkThatStandsAlone) {
  EXPECT_TRUE(Plan().figures("bench_a", {{{"start", 1}, {"scaled/800", 2}}, {}}).empty());
}

TEST(Plan, ReportsATimeThatWasAskedFor) {
  Plan plan;
  plan.report_time("start", at_most(60));
  const auto figures = plan.figures("bench_a", {{{"start", 59}}, {}});
  ASSERT_EQ(figures.size(), 1);
  EXPECT_EQ(figures[0].unit, "ns");
  EXPECT_FALSE(figures[0].is_ratio());
  EXPECT_TRUE(reaches(figures[0]));
}

TEST(Plan, TurnsACounterIntoItsUnit) {
  Plan plan;
  plan.report_counter("music", "core", "%", std::nullopt, 100);
  const auto figures = plan.figures("bench_a", {{{"music", 1}}, {{"music", {{"core", 0.02}}}}});
  ASSERT_EQ(figures.size(), 1);
  EXPECT_EQ(figures[0].what, "music, core");
  EXPECT_DOUBLE_EQ(figures[0].value, 2);
  EXPECT_EQ(figures[0].unit, "%");
}

TEST(Plan, TakesNoCounterForAPeer) {
  const auto figures =
      Plan().figures("bench_a", {{{"music/ours", 1}}, {{"music/ours", {{"core", 0.02}}}}});
  EXPECT_TRUE(figures.empty());
}

TEST(Plan, ShowsHowACostGrows) {
  Plan plan;
  plan.report_growth("notes", {1, 3, 12});
  const auto figures =
      plan.figures("bench_a", {{{"notes/1", 10}, {"notes/3", 29}, {"notes/12", 130}}, {}});
  EXPECT_EQ(whats(figures), (Names{"notes/1", "notes/3", "notes/12"}));
  EXPECT_FALSE(falls_short(figures[1]));
  EXPECT_TRUE(falls_short(figures[2]));
}

TEST(Plan, MeasuresGrowthFromTheLastSizeThatWasMeasured) {
  Plan plan;
  plan.report_growth("notes", {1, 3, 12});
  const auto figures = plan.figures("bench_a", {{{"notes/1", 10}, {"notes/12", 120}}, {}});
  ASSERT_EQ(figures.size(), 2);
  EXPECT_DOUBLE_EQ(figures[1].peer_value, 120);
}

TEST(Plan, MissesNothingWhenAllWasMeasured) {
  Plan plan;
  plan.expect("sum/eigen", at_least(0.9));
  plan.report_time("start", std::nullopt);
  plan.report_counter("start", "bytes", "", std::nullopt, 1);
  plan.report_growth("notes", {1, 3});
  const Measured measured = {
      {{"sum/ours", 1}, {"sum/eigen", 1}, {"start", 1}, {"notes/1", 1}, {"notes/3", 1}},
      {{"start", {{"bytes", 1}}}}};
  EXPECT_TRUE(plan.missing(measured).empty());
}

TEST(Plan, NamesAPeerThatIsMissing) {
  Plan plan;
  plan.expect("sum/eigne", at_least(0.9));
  EXPECT_EQ(plan.missing({{{"sum/ours", 1}, {"sum/eigen", 1}}, {}}), Names{"sum/eigne"});
}

TEST(Plan, NamesOursWhenOnlyThePeerWasMeasured) {
  Plan plan;
  plan.expect("sum/eigen", at_least(0.9));
  EXPECT_EQ(plan.missing({{{"sum/eigen", 1}}, {}}), Names{"sum/ours"});
}

TEST(Plan, NamesATimeACounterAndASizeThatAreMissing) {
  Plan plan;
  plan.report_time("start", std::nullopt);
  plan.report_counter("music", "core", "%", std::nullopt, 100);
  plan.report_growth("notes", {1, 3});
  EXPECT_EQ(plan.missing({{{"music", 1}, {"notes/1", 1}}, {}}),
            (Names{"start", "music, core", "notes/3"}));
}

} // namespace
} // namespace kavo::bench
