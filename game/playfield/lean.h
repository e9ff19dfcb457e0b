// The board's lean: the tip over by a quarter turn, and the rest after it.
#pragma once

#include "game/routine.h"

namespace kavo {

// Once per lock: tips the board when it is armed and the pull is beyond KAVO_HIGH, or counts the
// rest period down.
Out<> APPLYKAVO();

} // namespace kavo
