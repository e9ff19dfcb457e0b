// Benchmarks in pairs: "<what>/ours" beside "<what>/<peer>". After the run each pair's ratio is
// printed, by processor time and from the fastest repetition, which other work on the machine
// disturbs least.
#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace bench {

class RatioReporter : public benchmark::ConsoleReporter {
public:
  RatioReporter() : ConsoleReporter(OO_Tabular) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const auto& run : runs)
      if (run.run_type == Run::RT_Iteration && !run.error_occurred)
        note(run.run_name.function_name, run.GetAdjustedCPUTime());
    ConsoleReporter::ReportRuns(runs);
  }

  void Finalize() override {
    std::printf("\n%-44s %s\n", "times as fast", "(above 1: we are faster)");
    for (const auto& [name, time] : fastest_) {
      const auto slash = name.rfind('/');
      const auto ours = fastest_.find(name.substr(0, slash) + "/ours");
      if (slash != std::string::npos && ours != fastest_.end() && ours->first != name)
        std::printf("%-44s %.2f\n", name.c_str(), time / ours->second);
    }
  }

private:
  void note(const std::string& name, double time) {
    const auto [entry, is_new] = fastest_.emplace(name, time);
    if (!is_new)
      entry->second = std::min(entry->second, time);
  }

  std::map<std::string, double> fastest_;
};

// Registers one of a pair: `work` is what is measured, `bytes` what it goes through.
template<typename Work>
void add(const std::string& name, Work work, int64_t bytes = 0) {
  benchmark::RegisterBenchmark(name.c_str(), [work, bytes](benchmark::State& state) {
    for (auto _ : state)
      work();
    if (bytes > 0)
      state.SetBytesProcessed(state.iterations() * bytes);
  });
}

// A main: short repetitions in random order, unless the command line says otherwise.
inline int run(int argc, char** argv) {
  std::vector<std::string> words{argv[0], "--benchmark_repetitions=9", "--benchmark_min_time=0.02",
                                 "--benchmark_enable_random_interleaving=true",
                                 "--benchmark_report_aggregates_only=false"};
  words.insert(words.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  for (auto& word : words)
    arguments.push_back(word.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
    return 1;
  RatioReporter reporter;
  return benchmark::RunSpecifiedBenchmarks(&reporter) == 0 ? 1 : 0;
}

} // namespace bench
