// kavo_figures, with which scripts/bench ends: its table, its JSON and its exit status.
#include <gtest/gtest.h>

#include <limits>

#include "bench/figures/files.h"
#include "tests/desktop/process.h"
#include "tests/support/files.h"
#include "tests/support/temporary_folder.h"

namespace kavo::bench {
namespace {

class Report : public testing::Test {
protected:
  kavo::desktop::Outcome report(const std::vector<Figure>& figures) const {
    append_figures(figures_path, figures);
    return kavo::desktop::Process({{KAVO_FIGURES_PROGRAM, figures_path, json_path}, {}, "."})
        .wait();
  }

  // What Python prints of values in the parsed JSON.
  std::string from_json(const std::string& values) const {
    const std::string script =
        "import json, sys\nfigures = json.load(open(sys.argv[1]))\nprint(" + values + ")";
    const kavo::desktop::Outcome outcome =
        kavo::desktop::Process({{"python3", "-c", script, json_path}, {}, "."}).wait();
    EXPECT_EQ(outcome.code, 0) << outcome.errors;
    return outcome.output;
  }

  kavo::test::TemporaryFolder folder;
  std::string figures_path = folder / "figures.tsv";
  std::string json_path = folder / "figures.json";
};

Figure beside_loop(double value, Bound bound) {
  return {"bench_a", "sum", value, "ns", "loop", 100, bound};
}

bool contains(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST_F(Report, EndsWellWhenAllIsReached) {
  const kavo::desktop::Outcome outcome = report({beside_loop(150, at_most(2))});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(contains(outcome.output, "sum   150 ns  loop, 100 ns      1.50   <= 2.00  yes\n"));
  EXPECT_TRUE(contains(outcome.output, "0 ratios miss their bound by more than a tenth\n"));
}

TEST_F(Report, FailsWhenARatioMissesItsBoundByMoreThanATenth) {
  const kavo::desktop::Outcome outcome =
      report({beside_loop(150, at_most(2)), beside_loop(221, at_most(2))});
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 1);
  EXPECT_TRUE(contains(outcome.output, "1 ratios miss their bound by more than a tenth\n"));
}

TEST_F(Report, EndsWellWhenARatioMissesItsBoundByLess) {
  EXPECT_EQ(report({beside_loop(219, at_most(2))}).code, 0);
}

TEST_F(Report, NeverFailsForATime) {
  const kavo::desktop::Outcome outcome =
      report({{"bench_a", "start", 900e6, "ns", "", 0, at_most(60e6)}});
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(contains(outcome.output, "no\n"));
}

TEST_F(Report, FailsWhenARatioIsNoNumber) {
  EXPECT_EQ(report({beside_loop(std::numeric_limits<double>::quiet_NaN(), at_most(2))}).code, 1);
}

TEST_F(Report, RefusesAFileWithoutAnyFigure) {
  const kavo::desktop::Outcome outcome = report({});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "kavo_figures: " + figures_path + " holds no figure\n");
}

TEST_F(Report, RefusesAFileThatIsNotThere) {
  const std::string nowhere = folder / "nothing.tsv";
  const kavo::desktop::Outcome outcome =
      kavo::desktop::Process({{KAVO_FIGURES_PROGRAM, nowhere, json_path}, {}, "."}).wait();
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "kavo_figures: cannot read figures from " + nowhere + "\n");
}

TEST_F(Report, FailsWhenTheJsonCannotBeWritten) {
  json_path = folder / "nothing/figures.json";
  const kavo::desktop::Outcome outcome = report({beside_loop(150, at_most(2))});
  EXPECT_EQ(outcome.code, 1);
  EXPECT_EQ(outcome.errors, "kavo_figures: cannot write " + json_path + "\n");
}

TEST_F(Report, TellsHowItIsCalled) {
  const kavo::desktop::Outcome outcome =
      kavo::desktop::Process({{KAVO_FIGURES_PROGRAM}, {}, "."}).wait();
  EXPECT_EQ(outcome.code, 2);
  EXPECT_EQ(outcome.errors, "usage: kavo_figures <file> <json>\n");
}

TEST_F(Report, WritesJsonThatParses) {
  report({beside_loop(150, at_most(2)),
          {"bench_b", "say \"a\\b\"", 3.5, "MB", "", 0, at_least(4)},
          {"bench_b", "free", 1, "", "", 0, std::nullopt}});
  EXPECT_EQ(from_json("len(figures)"), "3\n");
  EXPECT_EQ(from_json("figures[0]"),
            "{'program': 'bench_a', 'what': 'sum', 'value': 150, 'unit': 'ns', 'peer': 'loop', "
            "'peer_value': 100, 'ratio': 1.5, 'at_most': 2, 'reaches': True}\n");
  EXPECT_EQ(from_json("figures[1]['what'], figures[1]['reaches']"), "say \"a\\b\" False\n");
  EXPECT_EQ(from_json("'reaches' in figures[2], 'peer' in figures[2]"), "False False\n");
}

TEST_F(Report, WritesNullWhereAFigureIsNoNumber) {
  report({{"bench_a", "sum", 0, "ns", "loop", 0, at_most(2)},
          {"bench_a", "sum", std::numeric_limits<double>::infinity(), "ns", "", 0, std::nullopt}});
  EXPECT_EQ(from_json("figures[0]['ratio'], figures[1]['value']"), "None None\n");
}

} // namespace
} // namespace kavo::bench
