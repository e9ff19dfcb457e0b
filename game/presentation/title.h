// The title screen.
#pragma once

#include "game/routine.h"

namespace kavo {

// Draws name, high scores and keys without presenting the frame.
Out<> DRAWTITLE();

} // namespace kavo
