// Figures on their way from the programs that measure to the one that reports.
#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>

#include "bench/figures/files.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::bench {
namespace {

class Files : public testing::Test {
protected:
  std::string refusal_of(const std::string& content) const {
    kavo::test::write_file(path, content);
    try {
      read_figures(path);
    } catch (const std::runtime_error& error) {
      return error.what();
    }
    return "";
  }

  kavo::test::TemporaryFolder folder;
  std::string path = folder / "figures.tsv";
};

const Figure judged = {"bench_a", "sum of 10", 1.5, "ns", "loop", 1.25, at_most(1.8)};
const Figure wanted_large = {"bench_a", "locks", 35000, "locks a second", "", 0, at_least(20000)};
const Figure unjudged = {"bench_b", "memory", 20.3, "MB", "", 0, std::nullopt};

TEST_F(Files, KeepEveryFieldOfAFigure) {
  append_figures(path, {judged, wanted_large, unjudged});
  const std::vector<Figure> figures = read_figures(path);
  ASSERT_EQ(figures.size(), 3);
  EXPECT_EQ(figures[0].program, "bench_a");
  EXPECT_EQ(figures[0].what, "sum of 10");
  EXPECT_EQ(figures[0].value, 1.5);
  EXPECT_EQ(figures[0].unit, "ns");
  EXPECT_EQ(figures[0].peer, "loop");
  EXPECT_EQ(figures[0].peer_value, 1.25);
  EXPECT_EQ(figures[0].bound->side, Bound::Side::at_most);
  EXPECT_EQ(figures[0].bound->limit, 1.8);
  EXPECT_EQ(figures[1].bound->side, Bound::Side::at_least);
  EXPECT_EQ(figures[1].bound->limit, 20000);
  EXPECT_FALSE(figures[1].is_ratio());
  EXPECT_FALSE(figures[2].bound.has_value());
}

TEST_F(Files, CollectTheFiguresOfSeveralPrograms) {
  append_figures(path, {judged});
  append_figures(path, {unjudged});
  EXPECT_EQ(read_figures(path).size(), 2);
}

TEST_F(Files, AreNamedWhenTheyCannotBeOpened) {
  const std::string nowhere = folder / "nothing/figures.tsv";
  EXPECT_THROW(append_figures(nowhere, {judged}), std::runtime_error);
  try {
    read_figures(nowhere);
    FAIL() << "a file that is not there was read";
  } catch (const std::runtime_error& error) {
    EXPECT_EQ(error.what(), "cannot read figures from " + nowhere);
  }
}

TEST_F(Files, AreRefusedWithADamagedLine) {
  const std::string good = "bench_a\tsum\t1.5\tns\tloop\t1.25\tat_most\t1.8";
  EXPECT_EQ(refusal_of(good + "\n"), "");
  EXPECT_EQ(refusal_of(good + "\nbench_a\tsum\t1.5\n"), path + ": not a figure: bench_a\tsum\t1.5");
  EXPECT_NE(refusal_of("bench_a\tsum\tfast\tns\tloop\t1.25\tat_most\t1.8\n"), "");
  EXPECT_NE(refusal_of("bench_a\tsum\t1.5x\tns\tloop\t1.25\tat_most\t1.8\n"), "");
  EXPECT_NE(refusal_of("bench_a\tsum\t1.5\tns\tloop\t1.25\tat_mots\t1.8\n"), "");
}

TEST_F(Files, TakeWhatIsHandedOnOnlyWhereTheEnvironmentNamesOne) {
  unsetenv("KAVO_FIGURES");
  hand_on({judged});
  EXPECT_EQ(folder.entry_count(), 0);
  setenv("KAVO_FIGURES", path.c_str(), 1);
  hand_on({judged});
  unsetenv("KAVO_FIGURES");
  EXPECT_EQ(read_figures(path).size(), 1);
}

} // namespace
} // namespace kavo::bench
