// The busiest frame there is: a stack up to the top, rain, lightning, shake, banners, and every
// pool full.
#pragma once

#include <cstdint>

namespace kavo::bench {

// Starts the game in the middle of it. Once in a process.
void start_storm();

// One whole frame with what is alive.
void draw_frame();

// One whole frame of the storm.
void draw_storm_frame();

// The board and the stars, once.
void raise_storm();

// Everything that ages with a frame, before each frame.
void keep_storm_alive();

// Ends all effects of the three pools but so many, of each kind its share.
void keep_effects(int64_t count);

// Lays the board on its side, or sets it up again: each row becomes a column.
void tip_board();

} // namespace kavo::bench
