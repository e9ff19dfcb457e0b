// The program in three steps, for who calls its frames, and whole. On error each returns early,
// with the error pending.
#pragma once

#include "game/routine.h"

namespace kavo {

inline constexpr const char* window_title = "KAVO - Schlagseite";

// Brings the host and the game state up. TESTMODE then tells that the arguments ask for a scene
// (game/shell/scenes.h), which takes the place of the other steps.
Out<> start_up(int argc, char** argv);

// One frame: keys, the screen's own work, the picture, a 16 ms pause. An animation that holds the
// frame up makes pictures and pauses of its own. QUITFLAG then tells that it was the last.
Out<> run_frame();

// Closes sound, screen and host, and prints "done".
Out<> shut_down();

// All of it: start-up, then the scene, or frames to the last one and the end.
Out<> run_program(int argc, char** argv);

// run_program() and the exit status: 0, or the uncaught-error path, which does not return.
int run_to_exit(int argc, char** argv);

} // namespace kavo
