// Short-lived visual effects in fixed pools: a new entry takes the first free slot and is dropped
// without a word when the pool is full. Lives count drawn frames.
#pragma once

#include "game/routine.h"

namespace kavo {

// Frames that a popup lives; it fades as they run out.
inline constexpr double popup_life = 55.0;

// Throws `count` particles from a point in pixels; `speed` scales their launch speed in pixels a
// frame. Three random draws each.
Out<> BURST(double x, double y, double count, double speed, double red, double green, double blue);

// One particle.
Out<> ADDPART(double x, double y, double vx, double vy, double life, double red, double green,
              double blue);

// A number that floats up from (x, y) for 55 frames.
Out<> ADDPOPUP(double x, double y, double value);

// The vertical trace of a hard drop, 8 frames long.
Out<> ADDSTREAK(double x, double top, double bottom);

// Age and draw all live effects of one kind by one frame, in slot order.
Out<> draw_popups();
Out<> draw_particles();
Out<> draw_streaks();
Out<> draw_shock_square();
Out<> draw_rain();
Out<> maybe_start_lightning();
Out<> draw_lightning();

} // namespace kavo
