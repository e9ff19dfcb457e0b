// Full rows: their flash, their removal and their score; and column gravity.
#pragma once

#include "game/routine.h"

namespace kavo {

// Flashes and removes every full row, counts and scores them. Rows above sink in their old order.
// CLEARED is the number of rows that this call removed.
Out<> CLEARLINES();

// Lets every block fall to the lowest free place of its own column; clears nothing.
Out<> SETTLEDOWN();

// The filter of CLEARLINES: 1 if the board row in this slot has an empty cell, else 0.
double __lambda_0(double row_slot); // NOLINT(bugprone-reserved-identifier): the routine's own name

} // namespace kavo
