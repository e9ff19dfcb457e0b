// The piece set, the roll of the next piece and what a locked piece is worth.
#pragma once

#include "game/routine.h"

namespace kavo {

// Rolls the preview piece: 15 % special single cells, else one of the seven standard shapes; two
// random draws every time, no bag and no memory.
Out<> ROLLNEXT();

// The preview becomes the falling piece at the top middle of the board, and a new preview is
// rolled. Whether it fits is the caller's question.
Out<> SPAWNPIECE();

// Points for locking a piece of this kind.
Out<double> PIECE_POINTS(double kind);

} // namespace kavo
