// kavo --replay [--verify] [file]
#pragma once

namespace kavo::recording {

// Gives the exit status: 0 when the game ended as recorded, 1 when it did not, or the recording
// cannot be played; what was seen, or why not, is printed.
int replay_to_exit(int argc, char** argv);

} // namespace kavo::recording
