// The busiest frame in full, from the rules to the pixels: the game, the runtime, the bridge and
// the canvas together, beside the canvas alone with the same shapes. And the price of one command.
#include <benchmark/benchmark.h>

#include "bench/ratios.h"
#include "bench/storm.h"
#include "bench/storm_frame.h"
#include "game/commands.h"
#include "runtime/qor.h"
#include "tests/fakes/stage.h"

namespace {

void WholeFrame(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state)
    kavo::bench::draw_storm_frame();
}

void CanvasAlone(benchmark::State& state) {
  const kavo::bench::Shapes shapes = kavo::bench::storm_frame();
  kavo::host::Canvas canvas(660, 800);
  int frame = 0;
  for ([[maybe_unused]] const auto _ : state) {
    kavo::bench::draw_anew(canvas, shapes, ++frame);
    benchmark::DoNotOptimize(canvas.pixels().data());
    benchmark::ClobberMemory();
  }
  state.counters["commands"] = static_cast<double>(shapes.size());
}

// The frame with so many of the 164 particles, popups and streaks.
void FrameWithEffects(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    kavo::bench::keep_storm_alive();
    kavo::bench::keep_effects(state.range(0));
    kavo::bench::draw_frame();
  }
}

// The same blocks on the upright board and on its side.
void TippedBoard(benchmark::State& state) {
  kavo::bench::tip_board();
  for ([[maybe_unused]] const auto _ : state)
    kavo::bench::draw_storm_frame();
  kavo::bench::tip_board();
}

// From the game's code to a pixel, the poll for errors included.
void OnePixelRectangle(benchmark::State& state) {
  for ([[maybe_unused]] const auto _ : state) {
    static_cast<void>(kavo::command::rect(100.0, 100.0, 1.0, 1.0, 1));
    benchmark::DoNotOptimize(kavo::error_is_pending());
  }
}

// The part of it that is neither the game's nor drawing: look-up and checks.
void OneCommandWithoutWork(benchmark::State& state) {
  const int64_t host = qor_runtime_handle();
  const qor_slot slots[3] = {};
  const uint32_t tags[3] = {QOR_TAG_INT64, QOR_TAG_INT64, QOR_TAG_INT64};
  for ([[maybe_unused]] const auto _ : state)
    benchmark::DoNotOptimize(qorrt_call_typed_f64(host, "DRAWCOLOR", slots, tags, 3));
}

BENCHMARK(WholeFrame)->Name("whole_frame/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(CanvasAlone)->Name("whole_frame/canvas_alone")->Unit(benchmark::kMicrosecond);
BENCHMARK(FrameWithEffects)->Arg(0)->Arg(75)->Arg(150)->Arg(164)->Unit(benchmark::kMicrosecond);
BENCHMARK(TippedBoard)->Name("tipped_board/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(WholeFrame)->Name("tipped_board/upright_board")->Unit(benchmark::kMicrosecond);
BENCHMARK(OnePixelRectangle)->Unit(benchmark::kNanosecond);
BENCHMARK(OneCommandWithoutWork)->Unit(benchmark::kNanosecond);

} // namespace

int main(int argc, char** argv) {
  // A canvas draws what somebody looks at.
  kavo::test::stage().watch = [](const kavo::host::Canvas& picture) {
    benchmark::DoNotOptimize(picture.pixels().data());
  };
  kavo::bench::start_storm();
  kavo::bench::expect("whole_frame/canvas_alone", kavo::bench::at_most(2.5));
  kavo::bench::expect("tipped_board/upright_board", kavo::bench::at_most(1.1));
  kavo::bench::report_growth("FrameWithEffects", {0, 75, 150, 164});
  kavo::bench::report_time("OnePixelRectangle", kavo::bench::at_most(60));
  kavo::bench::report_time("OneCommandWithoutWork", kavo::bench::at_most(25));
  return kavo::bench::run(argc, argv);
}
