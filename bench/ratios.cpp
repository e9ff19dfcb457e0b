#include "bench/ratios.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

namespace {

struct Reported {
  std::string name;
  std::string counter; // empty: the time
  std::string unit;
  std::optional<Bound> bound;
  double factor;
};

struct Plan {
  std::map<std::string, Bound> pairs; // by the peer's name
  std::vector<Reported> reported;
};

Plan& plan() {
  static Plan plan;
  return plan;
}

double nanoseconds(const benchmark::BenchmarkReporter::Run& run) {
  return run.GetAdjustedCPUTime() * 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
}

double median(std::vector<double> values) {
  const auto middle = values.begin() + std::ssize(values) / 2;
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

std::string counter_name(std::string benchmark, const std::string& counter) {
  return std::move(benchmark.append(" ").append(counter));
}

// What every repetition gave: times under the benchmark's name, counters under "<name> <counter>".
class Collector : public benchmark::ConsoleReporter {
public:
  Collector() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs) {
      has_failed_ |= run.error_occurred;
      if (run.run_type == Run::RT_Iteration && !run.error_occurred)
        note(run);
    }
    ConsoleReporter::ReportRuns(runs);
  }

  bool has_failed() const { return has_failed_; }
  const std::vector<std::string>& names() const { return names_; }
  std::optional<double> value(const std::string& name) const {
    const auto found = values_.find(name);
    return found == values_.end() ? std::nullopt : std::optional(median(found->second));
  }

private:
  void note(const Run& run) {
    const std::string name =
        run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
    if (!values_.contains(name))
      names_.push_back(name);
    values_[name].push_back(nanoseconds(run));
    for (const auto& [counter, value] : run.counters)
      values_[counter_name(name, counter)].push_back(value);
  }

  std::vector<std::string> names_; // of the benchmarks, as they first came
  std::map<std::string, std::vector<double>> values_;
  bool has_failed_ = false;
};

// Figures in the order of the benchmarks' names, so that two runs give the same table.
class FigureList {
public:
  FigureList(std::string program, const Collector& collector)
      : program_(std::move(program)), collector_(collector) {}

  std::vector<Figure> figures() {
    for (const Reported& reported : plan().reported)
      add_reported(reported);
    std::set<std::string> names(collector_.names().begin(), collector_.names().end());
    for (const std::string& name : names)
      add_pair(name);
    return figures_;
  }

private:
  void add_reported(const Reported& reported) {
    const bool is_time = reported.counter.empty();
    const auto value =
        collector_.value(is_time ? reported.name : counter_name(reported.name, reported.counter));
    if (value)
      figures_.push_back({program_,
                          is_time ? reported.name : reported.name + ", " + reported.counter,
                          *value * reported.factor, reported.unit, "", 0, reported.bound});
  }

  void add_pair(const std::string& name) {
    const auto slash = name.rfind('/');
    if (slash == std::string::npos || name.substr(slash) == "/ours")
      return;
    const std::string what = name.substr(0, slash);
    const auto ours = collector_.value(what + "/ours");
    if (!ours)
      return;
    const auto bound = plan().pairs.find(name);
    figures_.push_back({program_, what, *ours, "ns", name.substr(slash + 1),
                        *collector_.value(name),
                        bound == plan().pairs.end() ? std::nullopt : std::optional(bound->second)});
  }

  std::string program_;
  const Collector& collector_;
  std::vector<Figure> figures_;
};

// An expectation whose name is misspelt would never be judged.
bool everything_expected_was_run(const Collector& collector) {
  bool is_complete = true;
  const auto demand = [&](const std::string& name) {
    if (collector.value(name))
      return;
    std::cerr << "expected, but not measured: " << name << '\n';
    is_complete = false;
  };
  for (const auto& [name, bound] : plan().pairs) {
    demand(name);
    demand(name.substr(0, name.rfind('/')) + "/ours");
  }
  for (const Reported& reported : plan().reported)
    demand(reported.counter.empty() ? reported.name
                                    : counter_name(reported.name, reported.counter));
  return is_complete;
}

std::string program_name(const char* path) {
  const std::string_view whole = path;
  return std::string(whole.substr(whole.rfind('/') + 1));
}

} // namespace

void expect(const std::string& peer_name, Bound bound) {
  plan().pairs.emplace(peer_name, bound);
}

void report_time(const std::string& name, std::optional<Bound> bound) {
  plan().reported.push_back({name, "", "ns", bound, 1});
}

void report_counter(const std::string& name, const std::string& counter, const std::string& unit,
                    std::optional<Bound> bound, double factor) {
  plan().reported.push_back({name, counter, unit, bound, factor});
}

int run(int argc, char** argv) {
  std::vector<std::string> words{argv[0], "--benchmark_repetitions=9", "--benchmark_min_time=0.02",
                                 "--benchmark_enable_random_interleaving=true",
                                 "--benchmark_report_aggregates_only=false"};
  words.insert(words.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  arguments.reserve(words.size());
  for (auto& word : words)
    arguments.push_back(word.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
    return 1;
  Collector collector;
  if (benchmark::RunSpecifiedBenchmarks(&collector) == 0 || collector.has_failed())
    return 1;
  const auto figures = FigureList(program_name(argv[0]), collector).figures();
  std::cout << '\n';
  print_table(std::cout, figures);
  hand_on(figures);
  const bool is_filtered = !benchmark::GetBenchmarkFilter().empty();
  return is_filtered || everything_expected_was_run(collector) ? 0 : 1;
}

} // namespace bench
