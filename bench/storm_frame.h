// The drawing commands of the busiest frame (bench/storm.h), recorded from the game while it draws,
// as they arrive at the bridge. Chance is fixed, so that every run records the same frame but for
// what the clock moves: clouds, rain, twinkling stars.
//
// A program that records links with storm_frame_recording: the recorder stands between the game and
// its host there.
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

// Starts the game on the real host, without a window, in the middle of a storm. Once in a process.
void start_storm();

// One whole frame with what is alive.
void draw_frame();

// One whole frame of it, from the rules to the pixels.
void draw_storm_frame();

// The same, recorded.
Shapes record_storm_frame();

void draw(kavo::host::Canvas& canvas, const Shape& shape);

} // namespace kavo::bench
