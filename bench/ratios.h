// Benchmarks in pairs, "<what>/ours" beside "<what>/<peer>", and what each figure is to reach.
// With KAVO_FIGURES set, Google Benchmark writes what it measured into that folder, and what is
// expected of it stands in the context there: scripts/figures makes figures of the two.
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

#include "bench/figure.h"

namespace kavo::bench {

// "<what>/<peer>" is the time that "<what>/ours" is measured against. A pair without a bound is a
// figure as well, only not judged.
void expect(const std::string& peer_name, Bound bound);

// One benchmark's time, or one of its counters. `factor` turns the counter into the unit.
void report_time(const std::string& name, std::optional<Bound> bound = std::nullopt);
void report_counter(const std::string& name, const std::string& counter, const std::string& unit,
                    std::optional<Bound> bound = std::nullopt, double factor = 1);

// The times of "<name>/<size>" for growing sizes: none is to grow faster than the size.
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
// exit status: 1 when nothing ran.
int run(int argc, char** argv);

} // namespace kavo::bench
