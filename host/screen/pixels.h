// Areas of one framebuffer written as wide as the processor can: what the canvas's shapes are made
// of. Nothing is clipped here.
#pragma once

#include <cstdint>

namespace kavo::host {

// `width` pixels in each of `height` rows that begin `pitch` pixels apart; neither width nor height
// is 0, and all of them lie in one framebuffer, which is the caller's.
struct PixelRows {
  uint32_t* first;
  int64_t pitch;
  int64_t width;
  int64_t height;
};

// Gives every pixel of the area the colour, as it stands.
void fill(const PixelRows& area, uint32_t colour);

// Colours the pixels of an area eight wide whose bit is set in `rows`, one byte a row, the leftmost
// pixel in the highest bit. The others stay as they are.
void fill_bits(const PixelRows& area, const uint8_t* rows, uint32_t colour);

// Whether every pixel of an area 8 to 16 wide has the colour.
bool has_one_colour(const PixelRows& area, uint32_t colour);

// The same on processors whose registers hold four pixels. Those above choose.
void fill_narrowly(const PixelRows& area, uint32_t colour);
void fill_bits_narrowly(const PixelRows& area, const uint8_t* rows, uint32_t colour);
bool has_one_colour_narrowly(const PixelRows& area, uint32_t colour);

} // namespace kavo::host
