// What the special single-cell pieces do when they land.
#pragma once

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// Fires the power-up of this kind that came to rest on this board cell, then settles the whole
// board and clears full rows.
Out<> TRIGGERPOWERUP(double kind, double row, double column);

// The letter that is printed on blocks of this kind; "" for the ordinary ones.
Out<Text> PU_LABEL$(double kind);

} // namespace kavo
