// What happens when the falling piece can go no lower.
#pragma once

#include "game/routine.h"

namespace kavo {

// The whole chain: lock, power-up, points, row clearing, lean, balance and combo bonus, perhaps a
// star, the next piece, and the game-over test.
Out<> LOCKSEQUENCE();

// Writes the falling piece into the board; its cells above the top edge are dropped. A power-up
// that lands is noted in PUKIND, PUBR and PUBC.
Out<> LOCKPIECE();

} // namespace kavo
