// The options screen.
#pragma once

#include "game/routine.h"

namespace kavo {

// Draws both switches and the keys without presenting the frame.
Out<> DRAWOPTIONS();

} // namespace kavo
