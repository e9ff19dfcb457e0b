// How a new high score gets its three letters.
#pragma once

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// The character of a letter index: A..Z for 0..25, a blank from 26 on.
Out<Text> ENTER_CHAR$(double index);

// One frame of input, each edge 0 or 1: up and down change the letter, left and right move, enter
// stores the name and returns to the title.
Out<> UPDATEENTER(double up, double down, double left, double right, double enter);

} // namespace kavo
