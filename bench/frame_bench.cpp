// The busiest frame in full, from the rules to the pixels: the game, the runtime, the bridge and
// the canvas together, beside the canvas alone with the same shapes.
#include "bench/ratios.h"
#include "bench/storm.h"
#include "game/commands.h"
#include "game/presentation/frame.h"
#include "game/state.h"
#include "host/screen/canvas.h"
#include "host/screen/coordinates.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kavo::host::Canvas;

// A drawing command as the canvas takes it.
struct Shape {
  std::string_view name;
  std::array<int, 5> numbers{};
  std::string text;
};

std::vector<Shape>* recorded = nullptr; // null while nobody records

void record(const char* name, const qor_slot* slots, const uint32_t* tags, int64_t count) {
  Shape shape{name, {}, {}};
  for (int64_t i = 0; i < count; ++i) {
    const auto index = static_cast<std::size_t>(i);
    if (tags[i] == QOR_TAG_STRING)
      shape.text = slots[i].str;
    else
      shape.numbers[index] = kavo::host::to_pixel(
          tags[i] == QOR_TAG_INT64 ? static_cast<double>(slots[i].i64) : slots[i].f64);
  }
  recorded->push_back(std::move(shape));
}

uint32_t component(int value) {
  return kavo::host::to_colour_component(value);
}

void draw(Canvas& canvas, const Shape& shape) {
  const auto& n = shape.numbers;
  if (shape.name == "RECT" && n[4] != 0)
    canvas.fill_rectangle(n[0], n[1], n[2], n[3]);
  else if (shape.name == "RECT")
    canvas.outline_rectangle(n[0], n[1], n[2], n[3]);
  else if (shape.name == "DRAWCOLOR")
    canvas.set_colour(component(n[0]) << 16U | component(n[1]) << 8U | component(n[2]));
  else if (shape.name == "LINE")
    canvas.line(n[0], n[1], n[2], n[3]);
  else if (shape.name == "TEXT")
    canvas.text(n[0], n[1], shape.text);
  else if (shape.name == "CLS")
    canvas.clear();
}

void draw_frame() {
  kavo::bench::keep_storm_alive();
  static_cast<void>(kavo::DRAW());
  if (kavo::error_is_pending())
    qor_throw_uncaught();
}

// The game on the real host, without a window.
void start_storm() {
  kavo::set_geometry();
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  static_cast<void>(kavo::command::screen(kavo::SCRW, kavo::SCRH, "bench", 1));
  kavo::set_initial_values();
  static_cast<void>(kavo::RESETGAME());
  kavo::bench::raise_storm();
}

std::vector<Shape> shapes_of_a_frame() {
  std::vector<Shape> shapes;
  recorded = &shapes;
  draw_frame();
  recorded = nullptr;
  return shapes;
}

void WholeFrame(benchmark::State& state) {
  for (auto _ : state)
    draw_frame();
}

void CanvasAlone(benchmark::State& state) {
  const std::vector<Shape> shapes = shapes_of_a_frame();
  Canvas canvas(static_cast<int>(kavo::SCRW), static_cast<int>(kavo::SCRH));
  for (auto _ : state) {
    for (const Shape& shape : shapes)
      draw(canvas, shape);
    benchmark::DoNotOptimize(canvas.pixels().data());
    benchmark::ClobberMemory();
  }
  state.counters["commands"] = static_cast<double>(shapes.size());
}

BENCHMARK(WholeFrame)->Name("whole_frame/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(CanvasAlone)->Name("whole_frame/canvas_alone")->Unit(benchmark::kMicrosecond);

} // namespace

// The linker puts these between the game and its host (--wrap), under these names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

double __real_qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                                   const uint32_t* tags, int64_t n);

double __wrap_qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                                   const uint32_t* tags, int64_t n) {
  if (recorded != nullptr)
    record(name, static_cast<const qor_slot*>(slots), tags, n);
  return __real_qorrt_call_typed_f64(handle, name, slots, tags, n);
}
}
// NOLINTEND(bugprone-reserved-identifier)

int main(int argc, char** argv) {
  unsetenv("DISPLAY");
  unsetenv("WAYLAND_DISPLAY");
  start_storm();
  bench::expect("whole_frame/canvas_alone", bench::at_most(2.5));
  return bench::run(argc, argv);
}
