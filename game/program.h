// The program from its first statement to its last.
#pragma once

#include "game/routine.h"

namespace kavo {

// Brings the host and the game state up, then runs the scene that the arguments ask for, or the
// main loop. On error it returns early, with the error pending.
Out<> run_program(int argc, char** argv);

// run_program() and the exit status: 0, or the uncaught-error path, which does not return.
int run_to_exit(int argc, char** argv);

} // namespace kavo
