// The fixed scenes that "shot" draws, saves as pictures and leaves.
#pragma once

#include "game/routine.h"

namespace kavo {

// Runs the scene that TESTTAB$ names, the default one for any other word, shuts sound and screen
// down and prints the scene's line.
Out<> run_scene();

} // namespace kavo
