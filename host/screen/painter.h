// Shapes into pixels: all of them, or what lies within a part of the picture.
#pragma once

#include <cstdint>
#include <string_view>

#include "host/screen/area.h"
#include "host/screen/display_list.h"

namespace kavo::host {

class Ground;
class Legibility;

class Painter {
public:
  // Into a picture whose rows are `width` pixels long, on its ground, and nowhere but in `part`,
  // which lies in the picture. Pixels and ground stay the caller's.
  Painter(uint32_t* pixels, int width, Ground& ground, const Area& part)
      : pixels_(pixels), width_(width), ground_(ground), columns_(part.columns()),
        rows_(part.rows()) {}

  void paint(const Shape& shape);

private:
  void rectangle(const Shape& shape);
  void shallow_line(Shape line);
  void steep_line(Shape line);
  void text(const Shape& text);
  void glyph(int64_t x, int64_t y, const uint8_t* rows, uint32_t colour);
  void outline_of_glyph(int64_t x, int64_t y, const uint8_t* rows, Legibility& letters);
  uint32_t* row(int64_t y) { return pixels_ + y * width_; }

  uint32_t* pixels_;
  int width_;
  Ground& ground_;
  Range columns_;
  Range rows_;
};

} // namespace kavo::host
