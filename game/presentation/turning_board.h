// The animation of a tip.
#pragma once

#include "game/routine.h"

namespace kavo {

// Shows the board turning by a quarter: +1 clockwise, -1 anticlockwise. Blocks for eight frames.
Out<> ANIMATEKAVO(double direction);

} // namespace kavo
