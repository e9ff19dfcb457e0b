// The sky behind every screen: sun, two drifting clouds and twinkling stars.
#pragma once

#include "game/routine.h"

namespace kavo {

Out<> DRAWSKY();

// A cleared dark-blue screen; the menu screens add the sky.
Out<> draw_night();
Out<> draw_menu_background();

// One cloud, 100 pixels wide, with its reference point at the left of its middle band.
Out<> DRAWCLOUD(double x, double y);

} // namespace kavo
