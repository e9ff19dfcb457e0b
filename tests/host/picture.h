// Canvases as text: what a test draws is what it reads.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "host/screen/canvas.h"

namespace kavo::test {

using Picture = std::vector<std::string>;

// One character a pixel: '.' for black, '#' for anything else.
inline Picture picture_of(const kavo::host::Canvas& canvas) {
  Picture picture;
  for (int y = 0; y < canvas.height(); ++y) {
    std::string row;
    for (int x = 0; x < canvas.width(); ++x)
      row += canvas.row(y)[x] == 0 ? '.' : '#';
    picture.push_back(row);
  }
  return picture;
}

// The rows from `top` on, of the columns from `left` on.
inline Picture part_of(const kavo::host::Canvas& canvas, int left, int top, int width, int height) {
  Picture part;
  for (const std::string& row : picture_of(canvas))
    part.push_back(row.substr(static_cast<size_t>(left), static_cast<size_t>(width)));
  return {part.begin() + top, part.begin() + top + height};
}

inline bool is_black(const kavo::host::Canvas& canvas) {
  for (const uint32_t pixel : canvas.pixels())
    if (pixel != 0)
      return false;
  return true;
}

} // namespace kavo::test
