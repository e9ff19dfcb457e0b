// The board's lean: the pull of its blocks, the tip over by a quarter turn, and its animation.
#pragma once

#include "game/routine.h"

namespace kavo {

// The pull of the board: for each block its distance in columns from the vertical centre line,
// heavy blocks twice. Positive when the right-hand side is heavier.
Out<double> TORQUE();

// Once per lock: tips the board when it is armed and the pull is beyond KAVO_HIGH, or counts the
// rest period down.
Out<> APPLYKAVO();

// Shows the board turning by a quarter: +1 clockwise, -1 anticlockwise. Blocks for eight frames.
Out<> ANIMATEKAVO(double direction);

} // namespace kavo
