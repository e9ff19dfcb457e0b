// The busiest frame there is: a stack up to the top, rain, lightning, shake, banners, and every
// pool full.
#pragma once

namespace kavo::bench {

// The board and the stars, once.
void raise_storm();

// Everything that ages with a frame, before each frame.
void keep_storm_alive();

} // namespace kavo::bench
