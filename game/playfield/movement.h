// The geometry of the falling piece: collision, rotation with its sideways kicks, the ghost row
// and the hard drop.
#pragma once

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// 1 if the shape collides with a side wall, the floor or a block when its top-left corner stands
// at this column and row, else 0. Above the top edge everything is free.
Out<double> CHECKCOLLISION(const Array& shape, double x, double y);

// A new matrix: `matrix` turned a quarter turn anticlockwise about its centre.
Out<Array> ROTATEMATRIX(const Array& matrix);

// Turns the falling piece in place, else one column to the left, else one to the right, else not
// at all.
Out<> TRYROTATE();

// The row at which the falling piece would come to rest.
Out<double> GHOSTY();

// Drops the falling piece as far as it goes, leaves a streak for each of its cells and locks it.
Out<> HARDDROP();

} // namespace kavo
