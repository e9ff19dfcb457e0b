// The program as its player starts it: it records the games that are played, or plays one again.
#pragma once

namespace kavo::recording {

// `--replay` as the first argument plays a recorded game: the file that is named, else the last one
// that was kept, in the window or, with `--verify`, without one. Anything else is the game itself.
// Gives the exit status.
int run_to_exit(int argc, char** argv);

} // namespace kavo::recording
