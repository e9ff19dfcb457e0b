// Where a shape has room on the board.
#pragma once

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// 1 if the shape collides with a side wall, the floor or a block when its top-left corner stands
// at this column and row, else 0. Above the top edge everything is free.
Out<double> CHECKCOLLISION(const Array& shape, double x, double y);

// The same question, asked of a whole cell.
Out<bool> fits(const Array& shape, int64_t x, int64_t y);

// The row at which the falling piece would come to rest.
Out<double> GHOSTY();

} // namespace kavo
