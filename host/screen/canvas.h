// The picture being drawn: a plain framebuffer and the shapes that go into it.
//
// Pixels are 32-bit 0x00RRGGBB, row after row without padding. Everything is clipped to the
// picture; a shape that lies outside it, or has no size, draws nothing. The same calls leave the
// same bytes on every machine: there is no blending, no rounding mode and no driver in between.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "host/screen/ground.h"

namespace kavo::host {

class Legibility;

class Canvas {
public:
  static constexpr int cell_width = 8; // of one character
  static constexpr int cell_height = 16;

  // A black picture; both sizes are at least 1 and at most 32767. The drawing colour starts as
  // white.
  Canvas(int width, int height);
  Canvas(Canvas&&) = default;
  Canvas& operator=(Canvas&&) = default;
  Canvas(const Canvas&) = delete;
  Canvas& operator=(const Canvas&) = delete;
  ~Canvas() = default;

  int width() const { return width_; }
  int height() const { return height_; }
  std::span<const uint32_t> pixels() const {
    // A ground that is laid late is still the same picture.
    ground_.lay(pixels_.data());
    return pixels_;
  }
  const uint32_t* row(int y) const { return &pixels()[static_cast<size_t>(y) * width_]; }

  // To be written pixel by pixel, 0x00RRGGBB; valid until the picture moves.
  std::span<uint32_t> pixels_to_change() {
    ground_.make_room(pixels_.data(), {0, width_}, {0, height_}, false);
    return pixels_;
  }

  // Moves the picture, as it is, into somebody else's memory of width × height pixels, where it is
  // whole afterwards and all that follows is drawn. The memory must stay until the picture has
  // moved on, or home into memory of its own. That spares whoever shows it a copy.
  void move_to(uint32_t* memory);
  void move_home();

  // Makes the whole picture black; the drawing colour stays.
  void clear() { ground_.change(0); }

  // The colour of the shapes that follow, 0x00RRGGBB.
  void set_colour(uint32_t colour) { colour_ = colour & 0x00FFFFFF; }

  // Covers the pixels x to x + width − 1 and y to y + height − 1; the outline is their outermost
  // ring, one pixel wide.
  void fill_rectangle(int x, int y, int width, int height);
  void outline_rectangle(int x, int y, int width, int height);

  // From one end point to the other, both included. The pixels are those nearest to the line, a
  // tie goes towards the larger coordinate, and the direction makes no difference.
  void line(int x1, int y1, int x2, int y2);

  // Writes UTF-8 in cells of 8 × 16 pixels, the first one's top-left corner at (x, y), without a
  // background. An invalid byte, a control character and a character that the font lacks each
  // show as a box. Pixels that touch a bright letter and on which it would be lost become dark.
  void text(int x, int y, std::string_view utf8);

private:
  void shallow_line(int64_t x1, int64_t y1, int64_t x2, int64_t y2);
  void steep_line(int64_t x1, int64_t y1, int64_t x2, int64_t y2);
  void glyph(int64_t x, int64_t y, const uint8_t* rows);
  void outline_of_glyph(int64_t x, int64_t y, const uint8_t* rows, Legibility& letters);

  int width_;
  int height_;
  uint32_t colour_ = 0x00FFFFFF;
  std::vector<uint32_t> own_pixels_; // empty while the picture lies elsewhere
  std::span<uint32_t> pixels_;
  mutable Ground ground_;
};

} // namespace kavo::host
