// What the blocks of the board weigh.
#pragma once

#include "game/routine.h"

namespace kavo {

// The pull of the board: for each block its distance in columns from the vertical centre line,
// heavy blocks twice. Positive when the right-hand side is heavier.
Out<double> TORQUE();

} // namespace kavo
