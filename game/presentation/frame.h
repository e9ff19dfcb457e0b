// One whole frame of the playing screen.
#pragma once

#include "game/routine.h"

namespace kavo {

// Draws and presents a frame from the game state. Beside drawing it ages what belongs to the
// screen: the timers SHAKE, FLASH, COMBOFLASH, SHOCKLIFE and LIGHTNING and every live effect, so
// the speed of effects follows the frame rate.
Out<> DRAW();

} // namespace kavo
