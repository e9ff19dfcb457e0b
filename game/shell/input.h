// The ten keys: what they read now, what they read in the last frame, and which were pressed in
// between.
#pragma once

#include "game/routine.h"

namespace kavo {

// Reads all keys and computes the edges.
Out<> poll_keys();

// At the end of a frame: the current values become the previous ones.
void remember_keys();

} // namespace kavo
