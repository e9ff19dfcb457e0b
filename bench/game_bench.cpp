// The game alone, against a host that does nothing: how many locks it plays a second, and what
// the busiest frame costs in time and allocations.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <random>
#include <vector>

#include "bench/ratios.h"
#include "bench/storm.h"
#include "game/playfield/new_game.h"
#include "game/presentation/frame.h"
#include "game/state.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/recording_host.h"
#include "tests/game/players.h"

namespace kavo::bench {
namespace {

using kavo::test::Placement;

void start_afresh() {
  auto& host = kavo::test::recording_host();
  host.reset();
  host.is_discarding = true;
  kavo::test::fake_clock() = kavo::test::FakeClock();
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  set_geometry();
  set_initial_values();
}

void run(Out<>) {
  error_is_pending();
}

// ---- whole games --------------------------------------------------------------------------------

using Moves = std::vector<Placement>;

// One game of at most `most` locks. The players choose here, so that only the game is measured.
template<typename Choose>
Moves record_game(Choose choose, size_t most) {
  start_afresh();
  run(RESETGAME());
  Moves moves;
  while (!GAMEOVER && moves.size() < most) {
    moves.push_back(choose());
    kavo::test::drop_at(moves.back());
  }
  return moves;
}

// The same chance brings the same pieces, so the recorded moves fit.
void play_again(benchmark::State& state, const Moves& moves) {
  int64_t locks = 0;
  for ([[maybe_unused]] const auto _ : state) {
    start_afresh();
    run(RESETGAME());
    for (const Placement& move : moves)
      kavo::test::drop_at(move);
    locks += std::ssize(moves);
  }
  state.counters["locks"] =
      benchmark::Counter(static_cast<double>(locks), benchmark::Counter::kIsRate);
  state.counters["locks_a_game"] = static_cast<double>(moves.size());
  state.counters["rows_a_game"] = static_cast<double>(LINESCLEARED);
}

void GreedyGame(benchmark::State& state) {
  play_again(state, record_game(kavo::test::best_placement, 1000));
}
BENCHMARK(GreedyGame)->Unit(benchmark::kMillisecond);

void ClumsyGame(benchmark::State& state) {
  std::mt19937_64 random(1);
  play_again(state, record_game([&random] { return kavo::test::random_placement(random); }, 1000));
}
BENCHMARK(ClumsyGame)->Unit(benchmark::kMillisecond);

// ---- the busiest frame --------------------------------------------------------------------------

// Counted in a process of its own, whose memory is traced.
void count_allocations(benchmark::State& state) {
  double made = 0;
  double outliving = 0;
  std::FILE* counts = popen(KAVO_STORM_ALLOCATIONS, "r");
  if (counts == nullptr || std::fscanf(counts, "%lf %lf", &made, &outliving) != 2)
    state.SkipWithError("the allocations cannot be counted");
  if (counts != nullptr)
    pclose(counts);
  state.counters["allocations"] = made;
  state.counters["outliving"] = outliving;
}

void StormFrame(benchmark::State& state) {
  start_afresh();
  run(RESETGAME());
  raise_storm();
  const int64_t commands = kavo::test::recording_host().commands;
  for ([[maybe_unused]] const auto _ : state) {
    keep_storm_alive();
    run(DRAW());
  }
  state.counters["commands"] =
      static_cast<double>(kavo::test::recording_host().commands - commands) /
      static_cast<double>(state.iterations());
  count_allocations(state);
}
BENCHMARK(StormFrame)->Unit(benchmark::kMicrosecond);

} // namespace
} // namespace kavo::bench

int main(int argc, char** argv) {
  kavo::bench::report_counter("GreedyGame", "locks", "locks a second",
                              kavo::bench::at_least(20'000));
  kavo::bench::report_counter("ClumsyGame", "locks", "locks a second",
                              kavo::bench::at_least(20'000));
  kavo::bench::report_time("StormFrame");
  kavo::bench::report_counter("StormFrame", "allocations", "", kavo::bench::at_most(299));
  kavo::bench::report_counter("StormFrame", "outliving", "", kavo::bench::at_most(0));
  return kavo::bench::run(argc, argv);
}
