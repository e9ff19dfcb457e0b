// The five best scores, in memory and in tmp/kavo_high.txt: five lines of name;score, best first.
#pragma once

#include "game/routine.h"

namespace kavo {

// Fills the table from the file if there is one. A line without a semicolon leaves its entry as it
// was; lines after the fifth and fields after the second are ignored.
Out<> LOADHIGH();

// Writes the whole table, wholly or not at all.
Out<> SAVEHIGH();

// The slot 0..4 that this score would take, -1 for none; an equal score ranks below an older one.
Out<double> HS_RANK(double score);

// Puts an entry into slot `rank`, moves the worse ones down and saves.
Out<> HS_INSERT(const char* name, double rank, double score);

} // namespace kavo
