#include "host/screen/pixels.h"

#include <cstring>

// The build is for the oldest processor, whose registers hold four pixels; those of nearly every
// processor in use hold eight.
#if defined(__x86_64__)
#define KAVO_WIDE __attribute__((target("avx2")))
#else
#define KAVO_WIDE
#endif

namespace kavo::host {

namespace {

bool is_wide() {
#if defined(__x86_64__)
  return __builtin_cpu_supports("avx2") != 0;
#else
  return false;
#endif
}

__extension__ typedef uint32_t Four __attribute__((vector_size(16)));
__extension__ typedef uint32_t Eight __attribute__((vector_size(32)));

template<typename Chunk>
constexpr int64_t pixels_in = sizeof(Chunk) / sizeof(uint32_t);

// One register after the other, four at a time in long rows, the last of a row over what may be
// there already, so that none is left over to be written alone.
template<typename Chunk>
[[gnu::always_inline]] inline void fill_in_chunks(const PixelRows& area, uint32_t colour) {
  const Chunk colours = Chunk{} + colour;
  uint32_t* row = area.first;
  for (int64_t y = 0; y < area.height; ++y, row += area.pitch) {
    uint32_t* const last = row + area.width - pixels_in<Chunk>;
    uint32_t* next = row;
    for (; last - next > 3 * pixels_in<Chunk>; next += 4 * pixels_in<Chunk>)
      for (int64_t chunk = 0; chunk < 4; ++chunk)
        std::memcpy(next + chunk * pixels_in<Chunk>, &colours, sizeof colours);
    for (; next < last; next += pixels_in<Chunk>)
      std::memcpy(next, &colours, sizeof colours);
    std::memcpy(last, &colours, sizeof colours);
  }
}

KAVO_WIDE void fill_widely(const PixelRows& area, uint32_t colour) {
  fill_in_chunks<Eight>(area, colour);
}

// One to three, the edges of a cell: a loop would be prepared for many.
void fill_few(const PixelRows& area, uint32_t colour) {
  uint32_t* row = area.first;
  for (int64_t y = 0; y < area.height; ++y, row += area.pitch) {
    row[0] = colour;
    row[area.width / 2] = colour;
    row[area.width - 1] = colour;
  }
}

// A compiler left to itself makes a branch for every pixel, which the processor can only guess.
[[gnu::always_inline]] inline void select_bits(const PixelRows& area, const uint8_t* rows,
                                               uint32_t colour) {
  constexpr Eight places = {0x80, 0x40, 0x20, 0x10, 8, 4, 2, 1};
  uint32_t* row = area.first;
  for (int64_t y = 0; y < area.height; ++y, row += area.pitch) {
    Eight pixels;
    std::memcpy(&pixels, row, sizeof pixels);
    pixels = (places & rows[y]) != 0 ? Eight{} + colour : pixels;
    std::memcpy(row, &pixels, sizeof pixels);
  }
}

KAVO_WIDE void select_bits_widely(const PixelRows& area, const uint8_t* rows, uint32_t colour) {
  select_bits(area, rows, colour);
}

// Two registers a row, the second one over what the first may have looked at already.
template<typename Chunk>
[[gnu::always_inline]] inline bool has_one_colour_in_chunks(const PixelRows& area,
                                                            uint32_t colour) {
  const Chunk colours = Chunk{} + colour;
  Chunk difference = {};
  const uint32_t* row = area.first;
  for (int64_t y = 0; y < area.height; ++y, row += area.pitch) {
    Chunk left;
    Chunk right;
    std::memcpy(&left, row, sizeof left);
    std::memcpy(&right, row + area.width - pixels_in<Chunk>, sizeof right);
    difference |= (left ^ colours) | (right ^ colours);
  }
  uint32_t bits = 0;
  for (int64_t pixel = 0; pixel < pixels_in<Chunk>; ++pixel)
    bits |= difference[pixel];
  return bits == 0;
}

KAVO_WIDE bool has_one_colour_widely(const PixelRows& area, uint32_t colour) {
  return has_one_colour_in_chunks<Eight>(area, colour);
}

} // namespace

void fill_narrowly(const PixelRows& area, uint32_t colour) {
  if (area.width >= pixels_in<Four>)
    fill_in_chunks<Four>(area, colour);
  else
    fill_few(area, colour);
}

void fill_bits_narrowly(const PixelRows& area, const uint8_t* rows, uint32_t colour) {
  select_bits(area, rows, colour);
}

bool has_one_colour_narrowly(const PixelRows& area, uint32_t colour) {
  return has_one_colour_in_chunks<Eight>(area, colour);
}

void fill(const PixelRows& area, uint32_t colour) {
  if (area.width >= pixels_in<Eight> && is_wide())
    fill_widely(area, colour);
  else
    fill_narrowly(area, colour);
}

void fill_bits(const PixelRows& area, const uint8_t* rows, uint32_t colour) {
  is_wide() ? select_bits_widely(area, rows, colour) : select_bits(area, rows, colour);
}

bool has_one_colour(const PixelRows& area, uint32_t colour) {
  return is_wide() ? has_one_colour_widely(area, colour) : has_one_colour_narrowly(area, colour);
}

} // namespace kavo::host
