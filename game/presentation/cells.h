// Cells and colours, shared by the frame, the preview and the tip-over animation.
#pragma once

#include <array>

#include "game/routine.h"
#include "game/values.h"

namespace kavo {

// Red, green, blue.
using Color = std::array<double, 3>;

// The colour of a cell value; grey for any value that is no piece kind.
Out<Color> COLOR_FOR(double value);

// The letter that is printed on blocks of this kind; "" for the ordinary ones.
Out<Text> PU_LABEL$(double kind);

// One cell of the board: dark when empty, else bevelled, with its letter from kind 8 on. Cells
// outside the board are not drawn, which hides a piece's rows above the top edge.
Out<> DRAWCELL(double row, double column, double value);

// A 4 x 4 shape without bevels at (x, y), with this pitch in pixels.
Out<> DRAWMINI(double value, double x, double y, int64_t size, const Array& piece);

} // namespace kavo
