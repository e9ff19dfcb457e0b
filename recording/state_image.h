// The game's state as bytes: every variable of game/state_variables.inc but the program's
// arguments, with its name, so that another version's is known to be one.
#pragma once

#include "recording/bytes.h"

namespace kavo::recording {

void write_state(ByteWriter& out);

// Makes it the game's state. Throws Damaged, and the state is then neither the old one nor a whole
// new one, when these are not the variables of this game.
void read_state(ByteReader& in);

} // namespace kavo::recording
