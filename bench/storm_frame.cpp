#include "bench/storm_frame.h"

#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>

#include "bench/storm.h"
#include "game/commands.h"
#include "game/playfield/new_game.h"
#include "game/presentation/frame.h"
#include "game/state.h"
#include "host/screen/coordinates.h"

namespace kavo::bench {

namespace {

Shapes* recorded = nullptr; // null while nobody records

Shape::Kind kind_of(std::string_view name, const std::array<int, 5>& numbers) {
  if (name == "RECT")
    return numbers[4] != 0 ? Shape::Kind::filled : Shape::Kind::outlined;
  static const std::map<std::string_view, Shape::Kind> kinds = {
      {"CLS", Shape::Kind::clear},
      {"DRAWCOLOR", Shape::Kind::colour},
      {"LINE", Shape::Kind::line},
      {"TEXT", Shape::Kind::text},
  };
  return kinds.at(name);
}

void record(std::string_view name, const qor_slot* slots, const uint32_t* tags, int64_t count) {
  if (name == "RND" || name == "SCREENFLIP")
    return;
  std::array<int, 5> numbers = {};
  std::string text;
  for (int64_t i = 0; i < count; ++i) {
    if (tags[i] == QOR_TAG_STRING)
      text = slots[i].str;
    else
      numbers[static_cast<size_t>(i)] = kavo::host::to_pixel(
          tags[i] == QOR_TAG_INT64 ? static_cast<double>(slots[i].i64) : slots[i].f64);
  }
  recorded->push_back(
      {kind_of(name, numbers), {numbers[0], numbers[1], numbers[2], numbers[3]}, std::move(text)});
}

} // namespace

uint32_t Shape::colour() const {
  const auto part = [this](size_t index) {
    return kavo::host::to_colour_component(numbers[index]);
  };
  return part(0) << 16U | part(1) << 8U | part(2);
}

void start_storm() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "SDL_VIDEODRIVER"})
    unsetenv(name);
  setenv("QORRT_SEED", "1", 1);
  kavo::set_geometry();
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  static_cast<void>(kavo::command::screen(kavo::SCRW, kavo::SCRH, "bench", 1));
  kavo::set_initial_values();
  static_cast<void>(kavo::RESETGAME());
  kavo::bench::raise_storm();
}

void draw_storm_frame() {
  kavo::bench::keep_storm_alive();
  draw_frame();
}

void draw_frame() {
  static_cast<void>(kavo::DRAW());
  if (kavo::error_is_pending())
    qor_throw_uncaught();
}

Shapes record_storm_frame() {
  Shapes shapes;
  recorded = &shapes;
  draw_storm_frame();
  recorded = nullptr;
  return shapes;
}

void draw(kavo::host::Canvas& canvas, const Shape& shape) {
  const auto& n = shape.numbers;
  switch (shape.kind) {
  case Shape::Kind::clear:
    return canvas.clear();
  case Shape::Kind::colour:
    return canvas.set_colour(shape.colour());
  case Shape::Kind::filled:
    return canvas.fill_rectangle(n[0], n[1], n[2], n[3]);
  case Shape::Kind::outlined:
    return canvas.outline_rectangle(n[0], n[1], n[2], n[3]);
  case Shape::Kind::line:
    return canvas.line(n[0], n[1], n[2], n[3]);
  case Shape::Kind::text:
    return canvas.text(n[0], n[1], shape.text);
  }
}

} // namespace kavo::bench

// The linker puts these between the game and its host (--wrap), under these names.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

double __real_qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                                   const uint32_t* tags, int64_t n);

double __wrap_qorrt_call_typed_f64(int64_t handle, const char* name, const void* slots,
                                   const uint32_t* tags, int64_t n) {
  if (kavo::bench::recorded != nullptr)
    kavo::bench::record(name, static_cast<const qor_slot*>(slots), tags, n);
  return __real_qorrt_call_typed_f64(handle, name, slots, tags, n);
}
}
// NOLINTEND(bugprone-reserved-identifier)
