// What the special single-cell pieces do when they land.
#pragma once

#include "game/routine.h"

namespace kavo {

// Fires the power-up of this kind that came to rest on this board cell, then settles the whole
// board and clears full rows.
Out<> TRIGGERPOWERUP(double kind, double row, double column);

} // namespace kavo
