// Shows a recorded game in the window that the host has open.
#pragma once

#include "recording/replay.h"

namespace kavo::recording {

// To its end or as far as the player likes, in the pace that the player likes; then the host's keys
// are the program's again. Gives how it stood. Throws Damaged as Replay does. The game's state is
// then that of the recorded game.
struct Shown {
  Standing standing = Standing::playing; // playing: the player had enough
  Progress progress = {};
};
Shown show(const Recording& recording);

} // namespace kavo::recording
