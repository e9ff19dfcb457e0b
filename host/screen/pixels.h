// Areas of one framebuffer written as wide as the processor can: what the canvas's shapes are made
// of. Nothing is clipped here.
#pragma once

#include <cstdint>

namespace kavo::host {

// `width` pixels in each of `height` rows that begin `pitch` pixels apart; neither is 0.
struct Area {
  uint32_t* first;
  int64_t pitch;
  int64_t width;
  int64_t height;
};

void fill(const Area& area, uint32_t colour);

// Colours the pixels of an area eight wide whose bit is set in `rows`, one byte a row, the leftmost
// pixel in the highest bit. The others stay as they are.
void fill_bits(const Area& area, const uint8_t* rows, uint32_t colour);

// The same on processors whose registers hold four pixels. The two above choose.
void fill_narrowly(const Area& area, uint32_t colour);
void fill_bits_narrowly(const Area& area, const uint8_t* rows, uint32_t colour);

} // namespace kavo::host
