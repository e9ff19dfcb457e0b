// The start of a game.
#pragma once

#include "game/routine.h"

namespace kavo {

// Starts a new game on a fresh 15 x 10 board. High scores, switches and the timers that only fade
// out (SHAKE, FLASH) stay as they are.
Out<> RESETGAME();

} // namespace kavo
