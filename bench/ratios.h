// Benchmarks in pairs, "<what>/ours" beside "<what>/<peer>", and what each figure is to reach.
// After the run the figures are printed as a table, by processor time, medians over the
// repetitions, and handed on (bench/figures/files.h).
//
//   add("sum/ours", [] { … });
//   add("sum/eigen", [] { … });
//   expect("sum/eigen", at_least(0.9));       // times as fast as that peer
//   expect("sum/bare_loop", at_most(1.5));    // times the time that the peer takes
#pragma once

#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <vector>

#include "bench/figures/figure.h"

namespace kavo::bench {

// What the program's benchmarks are to give, as bench/figures/plan.h has it.
void expect(const std::string& peer_name, Bound bound);
void report_time(const std::string& name, std::optional<Bound> bound = std::nullopt);
void report_counter(const std::string& name, const std::string& counter, const std::string& unit,
                    std::optional<Bound> bound = std::nullopt, double factor = 1);
void report_growth(const std::string& name, const std::vector<int>& sizes);

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

// A main: short repetitions in random order, unless the command line says otherwise. Gives the
// exit status: 1 when a benchmark failed, or when an expected one was neither run nor filtered
// out.
int run(int argc, char** argv);

} // namespace kavo::bench
