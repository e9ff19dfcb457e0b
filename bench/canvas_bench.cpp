// One busy frame's drawing commands on our canvas, beside bare fills of as many pixels and beside
// two libraries that a game could draw with instead. The peers get the same letters as ready-made
// masks, which each of them colours and copies.
#include "bench/command_list.h"
#include "bench/ratios.h"
#include "host/screen/canvas.h"
#include "host/screen/font.h"
#include "host/screen/scaler.h"
#include "runtime/qorrt.h"

#include <SDL.h>
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

using bench::CommandList;
using bench::RecordedCommand;
using kavo::host::Canvas;

constexpr int width = 660;
constexpr int height = 800;

const CommandList& busy_frame() {
  static const CommandList list = bench::read_commands(BUSY_FRAME);
  return list;
}

uint32_t colour_of(const RecordedCommand& command) {
  const auto part = [&](size_t index) {
    return static_cast<uint32_t>(std::clamp(command.whole(index), 0, 255));
  };
  return part(0) << 16U | part(1) << 8U | part(2);
}

void draw(Canvas& canvas, const RecordedCommand& command) {
  if (command.name == "RECT" && command.whole(4) != 0)
    canvas.fill_rectangle(command.whole(0), command.whole(1), command.whole(2), command.whole(3));
  else if (command.name == "RECT")
    canvas.outline_rectangle(command.whole(0), command.whole(1), command.whole(2),
                             command.whole(3));
  else if (command.name == "LINE")
    canvas.line(command.whole(0), command.whole(1), command.whole(2), command.whole(3));
  else if (command.name == "TEXT")
    canvas.text(command.whole(0), command.whole(1), command.slots[2].str);
  else if (command.name == "DRAWCOLOR")
    canvas.set_colour(colour_of(command));
  else
    canvas.clear();
}

// How many pixels the list must write, clipped shapes counting as what is left of them. The fill
// of the whole picture that follows a CLS makes that one's pixels needless: they do not count.
int64_t pixels_written() {
  int64_t sum = 0;
  for (const RecordedCommand& command : busy_frame().commands) {
    Canvas canvas(width, height);
    if (command.name == "DRAWCOLOR" || command.name == "CLS")
      continue;
    draw(canvas, command);
    sum += std::count_if(canvas.pixels().begin(), canvas.pixels().end(),
                         [](uint32_t pixel) { return pixel != 0; });
  }
  return sum;
}

// The least that so many pixels cost: whole rows of one framebuffer, filled one after the other.
void BareFills(benchmark::State& state) {
  const int64_t wanted = pixels_written();
  std::vector<uint32_t> pixels(size_t{width} * height);
  for (auto _ : state) {
    for (int64_t left = wanted; left > 0; left -= std::ssize(pixels)) {
      std::fill_n(pixels.begin(), std::min(left, std::ssize(pixels)), static_cast<uint32_t>(left));
      benchmark::ClobberMemory();
    }
  }
  state.counters["pixels"] = static_cast<double>(wanted);
}

void CanvasAlone(benchmark::State& state) {
  Canvas canvas(width, height);
  for (auto _ : state) {
    for (const RecordedCommand& command : busy_frame().commands)
      draw(canvas, command);
    benchmark::DoNotOptimize(canvas.pixels().data());
    benchmark::ClobberMemory();
  }
}

// As the game draws: each command by its name through the C interface.
void HostCommands(benchmark::State& state) {
  const int64_t host = qorrt_init(0, nullptr);
  qor_slot screen[4] = {};
  screen[0].i64 = width;
  screen[1].i64 = height;
  screen[2].str = "bench";
  screen[3].i64 = 1;
  const uint32_t tags[4] = {QOR_TAG_INT64, QOR_TAG_INT64, QOR_TAG_STRING, QOR_TAG_INT64};
  qorrt_call_typed_f64(host, "SCREEN", screen, tags, 4);
  for (auto _ : state)
    for (const RecordedCommand& command : busy_frame().commands)
      qorrt_call_typed_f64(host, command.name.c_str(), command.slots.data(), command.tags.data(),
                           std::ssize(command.slots));
  qorrt_shutdown(host);
}

// The price of a command: one pixel, look-up and checks included.
void OnePixelRectangle(benchmark::State& state) {
  const int64_t host = qorrt_init(0, nullptr);
  qor_slot slots[5] = {};
  slots[0].i64 = width;
  slots[1].i64 = height;
  slots[2].str = "bench";
  slots[3].i64 = 1;
  uint32_t tags[5] = {QOR_TAG_INT64, QOR_TAG_INT64, QOR_TAG_STRING, QOR_TAG_INT64, QOR_TAG_INT64};
  qorrt_call_typed_f64(host, "SCREEN", slots, tags, 4);
  for (size_t i = 0; i < 5; ++i) {
    slots[i].f64 = i < 2 ? 100 : 1;
    tags[i] = QOR_TAG_FLOAT64;
  }
  for (auto _ : state)
    benchmark::DoNotOptimize(qorrt_call_typed_f64(host, "RECT", slots, tags, 5));
  qorrt_shutdown(host);
}

// The part of it that is not drawing.
void OneCommandWithoutWork(benchmark::State& state) {
  const int64_t host = qorrt_init(0, nullptr);
  for (auto _ : state)
    benchmark::DoNotOptimize(qorrt_call_typed_f64(host, "GFX.CLOSE", nullptr, nullptr, 0));
  qorrt_shutdown(host);
}

// The printable letters of ASCII as masks of one byte a pixel, one below the other.
constexpr int first_letter = ' ';
constexpr int letter_count = '~' - first_letter + 1;

std::vector<uint8_t> letter_masks(int pitch) {
  std::vector<uint8_t> masks(size_t{Canvas::cell_height} * letter_count *
                             static_cast<size_t>(pitch));
  for (int letter = 0; letter < letter_count; ++letter) {
    const uint8_t* rows = kavo::host::glyph_rows(static_cast<char32_t>(first_letter + letter));
    for (int y = 0; y < Canvas::cell_height; ++y)
      for (int x = 0; x < Canvas::cell_width; ++x)
        masks[static_cast<size_t>((letter * Canvas::cell_height + y) * pitch + x)] =
            (rows[y] << x & 0x80) != 0 ? 255 : 0;
  }
  return masks;
}

// Calls `place(letter, x)` for each letter of a text.
template<typename Place>
void for_each_letter(const RecordedCommand& command, Place place) {
  int x = command.whole(0);
  for (const char* letter = command.slots[2].str; *letter != '\0';
       ++letter, x += Canvas::cell_width)
    place(std::clamp(*letter - first_letter, 0, letter_count - 1), x);
}

using SdlTexture = std::unique_ptr<SDL_Texture, void (*)(SDL_Texture*)>;

SdlTexture sdl_letters(SDL_Renderer* renderer) {
  std::vector<uint32_t> pixels;
  for (const uint8_t mask : letter_masks(Canvas::cell_width))
    pixels.push_back(uint32_t{mask} << 24U | 0x00FFFFFFU);
  SDL_Texture* texture =
      SDL_CreateTexture(renderer, SDL_PIXELFORMAT_ARGB8888, SDL_TEXTUREACCESS_STATIC,
                        Canvas::cell_width, Canvas::cell_height * letter_count);
  SDL_UpdateTexture(texture, nullptr, pixels.data(),
                    Canvas::cell_width * static_cast<int>(sizeof(uint32_t)));
  SDL_SetTextureBlendMode(texture, SDL_BLENDMODE_BLEND);
  return {texture, SDL_DestroyTexture};
}

void draw_text(SDL_Renderer* renderer, SDL_Texture* letters, const RecordedCommand& command) {
  uint8_t red = 0, green = 0, blue = 0, alpha = 0;
  SDL_GetRenderDrawColor(renderer, &red, &green, &blue, &alpha);
  SDL_SetTextureColorMod(letters, red, green, blue);
  for_each_letter(command, [&](int letter, int x) {
    const SDL_Rect source = {0, letter * Canvas::cell_height, Canvas::cell_width,
                             Canvas::cell_height};
    const SDL_Rect target = {x, command.whole(1), Canvas::cell_width, Canvas::cell_height};
    SDL_RenderCopy(renderer, letters, &source, &target);
  });
}

void draw(SDL_Renderer* renderer, SDL_Texture* letters, const RecordedCommand& command) {
  if (command.name == "DRAWCOLOR") {
    const uint32_t colour = colour_of(command);
    SDL_SetRenderDrawColor(renderer, static_cast<uint8_t>(colour >> 16U),
                           static_cast<uint8_t>(colour >> 8U), static_cast<uint8_t>(colour), 255);
  } else if (command.name == "RECT") {
    const SDL_Rect area = {command.whole(0), command.whole(1), command.whole(2), command.whole(3)};
    command.whole(4) != 0 ? SDL_RenderFillRect(renderer, &area)
                          : SDL_RenderDrawRect(renderer, &area);
  } else if (command.name == "LINE") {
    SDL_RenderDrawLine(renderer, command.whole(0), command.whole(1), command.whole(2),
                       command.whole(3));
  } else if (command.name == "TEXT") {
    draw_text(renderer, letters, command);
  } else if (command.name == "CLS") {
    SDL_SetRenderDrawColor(renderer, 0, 0, 0, 255);
    SDL_RenderClear(renderer);
  }
}

void SdlSoftwareRenderer(benchmark::State& state) {
  const std::unique_ptr<SDL_Surface, void (*)(SDL_Surface*)> surface(
      SDL_CreateRGBSurfaceWithFormat(0, width, height, 32, SDL_PIXELFORMAT_RGB888),
      SDL_FreeSurface);
  const std::unique_ptr<SDL_Renderer, void (*)(SDL_Renderer*)> renderer(
      SDL_CreateSoftwareRenderer(surface.get()), SDL_DestroyRenderer);
  const SdlTexture letters = sdl_letters(renderer.get());
  for (auto _ : state) {
    for (const RecordedCommand& command : busy_frame().commands)
      draw(renderer.get(), letters.get(), command);
    SDL_RenderFlush(renderer.get());
  }
}

// The masks as surfaces, one a letter, as a glyph cache keeps them.
class CairoLetters {
public:
  CairoLetters() : masks_(letter_masks(Canvas::cell_width)) {
    for (int letter = 0; letter < letter_count; ++letter)
      surfaces_.push_back(cairo_image_surface_create_for_data(
          &masks_[static_cast<size_t>(letter) * Canvas::cell_height * Canvas::cell_width],
          CAIRO_FORMAT_A8, Canvas::cell_width, Canvas::cell_height, Canvas::cell_width));
  }
  ~CairoLetters() { std::for_each(surfaces_.begin(), surfaces_.end(), cairo_surface_destroy); }
  CairoLetters(const CairoLetters&) = delete;
  CairoLetters& operator=(const CairoLetters&) = delete;

  void draw(cairo_t* cairo, const RecordedCommand& command) const {
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
    for_each_letter(command, [&](int letter, int x) {
      cairo_mask_surface(cairo, surfaces_[static_cast<size_t>(letter)], x, command.whole(1));
    });
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  }

private:
  std::vector<uint8_t> masks_;
  std::vector<cairo_surface_t*> surfaces_;
};

void draw(cairo_t* cairo, const CairoLetters& letters, const RecordedCommand& command) {
  if (command.name == "DRAWCOLOR") {
    const uint32_t colour = colour_of(command);
    cairo_set_source_rgb(cairo, (colour >> 16U) / 255.0, (colour >> 8U & 0xFFU) / 255.0,
                         (colour & 0xFFU) / 255.0);
  } else if (command.name == "RECT") {
    const bool is_filled = command.whole(4) != 0;
    const double inset = is_filled ? 0 : 0.5;
    cairo_rectangle(cairo, command.whole(0) + inset, command.whole(1) + inset,
                    command.whole(2) - 2 * inset, command.whole(3) - 2 * inset);
    is_filled ? cairo_fill(cairo) : cairo_stroke(cairo);
  } else if (command.name == "LINE") {
    cairo_move_to(cairo, command.whole(0) + 0.5, command.whole(1) + 0.5);
    cairo_line_to(cairo, command.whole(2) + 0.5, command.whole(3) + 0.5);
    cairo_stroke(cairo);
  } else if (command.name == "TEXT") {
    letters.draw(cairo, command);
  } else if (command.name == "CLS") {
    cairo_set_source_rgb(cairo, 0, 0, 0);
    cairo_paint(cairo);
  }
}

void Cairo(benchmark::State& state) {
  cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height);
  cairo_t* cairo = cairo_create(surface);
  cairo_set_antialias(cairo, CAIRO_ANTIALIAS_NONE);
  cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  cairo_set_line_width(cairo, 1);
  cairo_set_line_cap(cairo, CAIRO_LINE_CAP_SQUARE);
  const CairoLetters letters;
  for (auto _ : state) {
    for (const RecordedCommand& command : busy_frame().commands)
      draw(cairo, letters, command);
    cairo_surface_flush(surface);
  }
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}

// The finished picture in a window of another size.
void Scaled(benchmark::State& state) {
  Canvas canvas(width, height);
  for (const RecordedCommand& command : busy_frame().commands)
    draw(canvas, command);
  const auto to_height = static_cast<int>(state.range(0));
  const int to_width = to_height * width / height;
  std::vector<uint32_t> pixels(static_cast<size_t>(to_width) * static_cast<size_t>(to_height));
  kavo::host::Scaler scaler;
  for (auto _ : state) {
    scaler.draw(canvas, {pixels.data(), {to_width, to_height}, to_width});
    benchmark::ClobberMemory();
  }
}

BENCHMARK(BareFills)->Name("busy_frame/bare_fills")->Unit(benchmark::kMicrosecond);
BENCHMARK(CanvasAlone)->Name("busy_frame/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(HostCommands)->Name("busy_frame/ours_by_command_names")->Unit(benchmark::kMicrosecond);
BENCHMARK(SdlSoftwareRenderer)->Name("busy_frame/SDL")->Unit(benchmark::kMicrosecond);
BENCHMARK(Cairo)->Name("busy_frame/Cairo")->Unit(benchmark::kMicrosecond);
BENCHMARK(OnePixelRectangle)->Unit(benchmark::kNanosecond);
BENCHMARK(OneCommandWithoutWork)->Unit(benchmark::kNanosecond);
BENCHMARK(Scaled)->Arg(800)->Arg(1600)->Arg(1080)->Arg(728)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
  setenv("SDL_VIDEODRIVER", "dummy", 1);
  bench::expect("busy_frame/bare_fills", bench::at_most(1.8));
  bench::expect("busy_frame/SDL", bench::at_least(10));
  bench::expect("busy_frame/Cairo", bench::at_least(4));
  bench::report_time("OnePixelRectangle", bench::at_most(60));
  bench::report_time("OneCommandWithoutWork", bench::at_most(25));
  return bench::run(argc, argv);
}
