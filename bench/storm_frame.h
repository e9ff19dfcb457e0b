// The drawing commands of the busiest frame (bench/storm.h). The build records them from the game
// (record_storm.cpp), so that every run has the same.
#pragma once

#include <array>
#include <string>
#include <vector>

#include "host/screen/canvas.h"

namespace kavo::bench {

// A command decoded, so that drawing it costs what drawing costs.
struct Shape {
  enum class Kind { clear, colour, filled, outlined, line, text };
  Kind kind;
  std::array<int, 4> numbers; // as in the command
  std::string text;

  uint32_t colour() const; // 0x00RRGGBB, of Kind::colour
};

using Shapes = std::vector<Shape>;

Shapes storm_frame();

void draw(kavo::host::Canvas& canvas, const Shape& shape);

// All of them, every second time in other colours but on the same ground, so that no shape is what
// it was in the last frame: a canvas need not draw those again.
void draw_anew(kavo::host::Canvas& canvas, const Shapes& shapes, int frame);

} // namespace kavo::bench
