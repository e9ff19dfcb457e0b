// The table that people read.
#include <gtest/gtest.h>

#include <sstream>

#include "bench/figures/table.h"

namespace kavo::bench {
namespace {

std::string table(const Figure& figure) {
  std::ostringstream out;
  print_table(out, {figure});
  return out.str();
}

TEST(Table, ShowsThreeDigitsThatCount) {
  EXPECT_EQ(short_number(0.0512), "0.0512");
  EXPECT_EQ(short_number(0.00021), "0.000210");
  EXPECT_EQ(short_number(1.789), "1.79");
  EXPECT_EQ(short_number(84.1), "84.1");
  EXPECT_EQ(short_number(38900.4), "38900");
  EXPECT_EQ(short_number(0), "0");
  EXPECT_EQ(short_number(-12.34), "-12.3");
}

TEST(Table, ShowsTheFigureItsPeerTheirRatioTheBoundAndTheVerdict) {
  EXPECT_EQ(table({"bench_a", "sum", 1500, "ns", "loop", 1000, at_most(1.8)}),
            "what  figure   measured against  ratio  bound    reaches\n"
            "sum   1.50 us  loop, 1.00 us     1.50   <= 1.80  yes\n");
}

TEST(Table, ShowsABoundOfTheValueInItsUnit) {
  EXPECT_EQ(table({"bench_a", "start", 61e6, "ns", "", 0, at_most(60e6)}),
            "what   figure   measured against  ratio  bound       reaches\n"
            "start  61.0 ms                           <= 60.0 ms  no\n");
}

TEST(Table, ShoutsWhereARatioFallsShort) {
  EXPECT_NE(table({"bench_a", "sum", 3, "ns", "loop", 1, at_most(2)}).find("NO\n"),
            std::string::npos);
  EXPECT_NE(table({"bench_a", "sum", 2.1, "ns", "loop", 1, at_most(2)}).find("no\n"),
            std::string::npos);
}

TEST(Table, ShowsTimesBelowNothingInTheirUnitToo) {
  EXPECT_NE(table({"bench_a", "beyond", -77300, "ns", "", 0, std::nullopt}).find("-77.3 us"),
            std::string::npos);
}

} // namespace
} // namespace kavo::bench
