// One busy frame's drawing commands on our canvas, beside bare fills of as many pixels and beside
// two libraries that a game could draw with instead. The peers get the same letters as ready-made
// masks, which each of them colours and copies.
#include <SDL.h>
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

#include "bench/ratios.h"
#include "bench/storm_frame.h"
#include "host/screen/canvas.h"
#include "host/screen/font.h"
#include "host/screen/scaler.h"

namespace {

using kavo::bench::Shape;
using kavo::bench::Shapes;
using kavo::host::Canvas;

constexpr int width = 660;
constexpr int height = 800;

const Shapes& busy_frame() {
  static const Shapes shapes = kavo::bench::storm_frame();
  return shapes;
}

// How many pixels the list must write, clipped shapes counting as what is left of them. The fill
// of the whole picture that follows a CLS makes that one's pixels needless: they do not count.
int64_t pixels_written() {
  int64_t sum = 0;
  for (const Shape& shape : busy_frame()) {
    Canvas canvas(width, height);
    if (shape.kind == Shape::Kind::colour || shape.kind == Shape::Kind::clear)
      continue;
    draw(canvas, shape);
    sum += std::count_if(canvas.pixels().begin(), canvas.pixels().end(),
                         [](uint32_t pixel) { return pixel != 0; });
  }
  return sum;
}

// The least that so many pixels cost: whole rows of one framebuffer, filled one after the other.
void BareFills(benchmark::State& state) {
  const int64_t wanted = pixels_written();
  std::vector<uint32_t> pixels(size_t{width} * height);
  for ([[maybe_unused]] const auto _ : state) {
    for (int64_t left = wanted; left > 0; left -= std::ssize(pixels)) {
      std::fill_n(pixels.begin(), std::min(left, std::ssize(pixels)), static_cast<uint32_t>(left));
      benchmark::ClobberMemory();
    }
  }
  state.counters["pixels"] = static_cast<double>(wanted);
}

// With other colours in every frame, for a canvas that is given the same frame again draws nothing.
void CanvasAlone(benchmark::State& state) {
  Canvas canvas(width, height);
  int frame = 0;
  for ([[maybe_unused]] const auto _ : state) {
    kavo::bench::draw_anew(canvas, busy_frame(), ++frame);
    benchmark::DoNotOptimize(canvas.pixels().data());
    benchmark::ClobberMemory();
  }
}

void CanvasAgain(benchmark::State& state) {
  Canvas canvas(width, height);
  for ([[maybe_unused]] const auto _ : state) {
    for (const Shape& shape : busy_frame())
      draw(canvas, shape);
    benchmark::DoNotOptimize(canvas.pixels().data());
    benchmark::ClobberMemory();
  }
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
void for_each_letter(const Shape& shape, Place place) {
  int x = shape.numbers[0];
  for (const char* letter = shape.text.c_str(); *letter != '\0'; ++letter, x += Canvas::cell_width)
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

void draw_text(SDL_Renderer* renderer, SDL_Texture* letters, const Shape& shape) {
  uint8_t red = 0, green = 0, blue = 0, alpha = 0;
  SDL_GetRenderDrawColor(renderer, &red, &green, &blue, &alpha);
  SDL_SetTextureColorMod(letters, red, green, blue);
  for_each_letter(shape, [&](int letter, int x) {
    const SDL_Rect source = {0, letter * Canvas::cell_height, Canvas::cell_width,
                             Canvas::cell_height};
    const SDL_Rect target = {x, shape.numbers[1], Canvas::cell_width, Canvas::cell_height};
    SDL_RenderCopy(renderer, letters, &source, &target);
  });
}

void draw(SDL_Renderer* renderer, SDL_Texture* letters, const Shape& shape) {
  if (shape.kind == Shape::Kind::colour) {
    const uint32_t colour = shape.colour();
    SDL_SetRenderDrawColor(renderer, static_cast<uint8_t>(colour >> 16U),
                           static_cast<uint8_t>(colour >> 8U), static_cast<uint8_t>(colour), 255);
  } else if (shape.kind == Shape::Kind::filled || shape.kind == Shape::Kind::outlined) {
    const SDL_Rect area = {shape.numbers[0], shape.numbers[1], shape.numbers[2], shape.numbers[3]};
    shape.kind == Shape::Kind::filled ? SDL_RenderFillRect(renderer, &area)
                                      : SDL_RenderDrawRect(renderer, &area);
  } else if (shape.kind == Shape::Kind::line) {
    SDL_RenderDrawLine(renderer, shape.numbers[0], shape.numbers[1], shape.numbers[2],
                       shape.numbers[3]);
  } else if (shape.kind == Shape::Kind::text) {
    draw_text(renderer, letters, shape);
  } else if (shape.kind == Shape::Kind::clear) {
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
  for ([[maybe_unused]] const auto _ : state) {
    for (const Shape& shape : busy_frame())
      draw(renderer.get(), letters.get(), shape);
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

  void draw(cairo_t* cairo, const Shape& shape) const {
    cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
    for_each_letter(shape, [&](int letter, int x) {
      cairo_mask_surface(cairo, surfaces_[static_cast<size_t>(letter)], x, shape.numbers[1]);
    });
    cairo_set_operator(cairo, CAIRO_OPERATOR_SOURCE);
  }

private:
  std::vector<uint8_t> masks_;
  std::vector<cairo_surface_t*> surfaces_;
};

void draw(cairo_t* cairo, const CairoLetters& letters, const Shape& shape) {
  if (shape.kind == Shape::Kind::colour) {
    const uint32_t colour = shape.colour();
    cairo_set_source_rgb(cairo, (colour >> 16U) / 255.0, (colour >> 8U & 0xFFU) / 255.0,
                         (colour & 0xFFU) / 255.0);
  } else if (shape.kind == Shape::Kind::filled || shape.kind == Shape::Kind::outlined) {
    const bool is_filled = shape.kind == Shape::Kind::filled;
    const double inset = is_filled ? 0 : 0.5;
    cairo_rectangle(cairo, shape.numbers[0] + inset, shape.numbers[1] + inset,
                    shape.numbers[2] - 2 * inset, shape.numbers[3] - 2 * inset);
    is_filled ? cairo_fill(cairo) : cairo_stroke(cairo);
  } else if (shape.kind == Shape::Kind::line) {
    cairo_move_to(cairo, shape.numbers[0] + 0.5, shape.numbers[1] + 0.5);
    cairo_line_to(cairo, shape.numbers[2] + 0.5, shape.numbers[3] + 0.5);
    cairo_stroke(cairo);
  } else if (shape.kind == Shape::Kind::text) {
    letters.draw(cairo, shape);
  } else if (shape.kind == Shape::Kind::clear) {
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
  for ([[maybe_unused]] const auto _ : state) {
    for (const Shape& shape : busy_frame())
      draw(cairo, letters, shape);
    cairo_surface_flush(surface);
  }
  cairo_destroy(cairo);
  cairo_surface_destroy(surface);
}

// The finished picture in a window of another size.
void Scaled(benchmark::State& state) {
  Canvas canvas(width, height);
  for (const Shape& shape : busy_frame())
    draw(canvas, shape);
  const auto to_height = static_cast<int>(state.range(0));
  const int to_width = to_height * width / height;
  std::vector<uint32_t> pixels(static_cast<size_t>(to_width) * static_cast<size_t>(to_height));
  kavo::host::Scaler scaler;
  for ([[maybe_unused]] const auto _ : state) {
    scaler.draw(canvas, {pixels.data(), {to_width, to_height}, to_width});
    benchmark::ClobberMemory();
  }
}

BENCHMARK(BareFills)->Name("busy_frame/bare_fills")->Unit(benchmark::kMicrosecond);
BENCHMARK(CanvasAlone)->Name("busy_frame/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(CanvasAgain)->Name("same_frame_again/ours")->Unit(benchmark::kMicrosecond);
BENCHMARK(CanvasAlone)->Name("same_frame_again/drawn_anew")->Unit(benchmark::kMicrosecond);
BENCHMARK(SdlSoftwareRenderer)->Name("busy_frame/SDL")->Unit(benchmark::kMicrosecond);
BENCHMARK(Cairo)->Name("busy_frame/Cairo")->Unit(benchmark::kMicrosecond);
BENCHMARK(Scaled)->Arg(800)->Arg(1600)->Arg(1080)->Arg(728)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
  kavo::bench::expect("busy_frame/bare_fills", kavo::bench::at_most(1.8));
  kavo::bench::expect("same_frame_again/drawn_anew", kavo::bench::at_most(0.5));
  kavo::bench::expect("busy_frame/SDL", kavo::bench::at_least(10));
  kavo::bench::expect("busy_frame/Cairo", kavo::bench::at_least(4));
  return kavo::bench::run(argc, argv);
}
