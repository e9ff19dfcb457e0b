// How the falling piece moves: rotation with its sideways kicks, and the hard drop.
#pragma once

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// A new matrix: `matrix` turned a quarter turn anticlockwise about its centre.
Out<Array> ROTATEMATRIX(const Array& matrix);

// Turns the falling piece in place, else one column to the left, else one to the right, else not
// at all.
Out<> TRYROTATE();

// Drops the falling piece as far as it goes, leaves a streak for each of its cells and locks it.
Out<> HARDDROP();

} // namespace kavo
