#include "bench/ratios.h"

#include <algorithm>
#include <iostream>
#include <map>
#include <string_view>
#include <vector>

#include "bench/figures/files.h"
#include "bench/figures/plan.h"
#include "bench/figures/table.h"

namespace kavo::bench {

namespace {

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

// What every repetition gave.
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

  Measured measured() const {
    Measured measured;
    for (const auto& [name, values] : times_)
      measured.times[name] = median(values);
    for (const auto& [name, counters] : counters_)
      for (const auto& [counter, values] : counters)
        measured.counters[name][counter] = median(values);
    return measured;
  }

private:
  void note(const Run& run) {
    const std::string name =
        run.run_name.function_name + (run.run_name.args.empty() ? "" : "/" + run.run_name.args);
    times_[name].push_back(nanoseconds(run));
    for (const auto& [counter, value] : run.counters)
      counters_[name][counter].push_back(value);
  }

  std::map<std::string, std::vector<double>> times_;
  std::map<std::string, std::map<std::string, std::vector<double>>> counters_;
  bool has_failed_ = false;
};

bool is_everything_measured(const Measured& measured) {
  const std::vector<std::string> missing = plan().missing(measured);
  for (const std::string& name : missing)
    std::cerr << "expected, but not measured: " << name << '\n';
  return missing.empty();
}

std::string program_name(const char* path) {
  const std::string_view whole = path;
  return std::string(whole.substr(whole.rfind('/') + 1));
}

} // namespace

void expect(const std::string& peer_name, Bound bound) {
  plan().expect(peer_name, bound);
}

void report_time(const std::string& name, std::optional<Bound> bound) {
  plan().report_time(name, bound);
}

void report_counter(const std::string& name, const std::string& counter, const std::string& unit,
                    std::optional<Bound> bound, double factor) {
  plan().report_counter(name, counter, unit, bound, factor);
}

void report_growth(const std::string& name, const std::vector<int>& sizes) {
  plan().report_growth(name, sizes);
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
  const Measured measured = collector.measured();
  const std::vector<Figure> figures = plan().figures(program_name(argv[0]), measured);
  std::cout << '\n';
  print_table(std::cout, figures);
  hand_on(figures);
  const bool is_filtered = !benchmark::GetBenchmarkFilter().empty();
  return is_filtered || is_everything_measured(measured) ? 0 : 1;
}

} // namespace kavo::bench
