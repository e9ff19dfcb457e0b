// The main loop: one frame after another until QUITFLAG is set.
#pragma once

#include "game/routine.h"

namespace kavo {

// One frame: keys, the screen state's own work, the picture, a 16 ms pause.
Out<> run_frame();

Out<> main_loop();

} // namespace kavo
