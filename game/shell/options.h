// The options screen: music and sound effects, on or off.
#pragma once

#include "game/routine.h"

namespace kavo {

// One frame of input, each edge 0 or 1: up and down change the row, enter switches it, escape
// returns to the title. All may act in one frame, in this order.
Out<> UPDATEOPTIONS(double up, double down, double enter, double escape);

} // namespace kavo
