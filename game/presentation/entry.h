// The screen on which a new high score gets its name.
#pragma once

#include "game/routine.h"

namespace kavo {

// Draws points, letters and keys without presenting the frame.
Out<> DRAWENTER();

} // namespace kavo
