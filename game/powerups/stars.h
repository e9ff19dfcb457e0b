// Bonus stars that the falling piece collects.
#pragma once

#include "game/routine.h"

namespace kavo {

// Puts a star into a random cell of the upper board, unless that cell is occupied or every slot is
// taken.
Out<> SPAWNSTAR();

// Collects every star that the falling piece covers.
Out<> COLLECTSTARS();

} // namespace kavo
