// The screens of the program: title, options, name entry, pause and play.
#pragma once

#include "game/routine.h"

namespace kavo {

// One frame of the screen that GSTATE$ names: what the keys do there, the rules, the picture.
Out<> run_screen();

} // namespace kavo
