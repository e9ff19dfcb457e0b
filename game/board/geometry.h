// Cells: where they lie on the screen, and which of them a piece occupies.
#pragma once

#include "game/routine.h"
#include "game/state.h"

namespace kavo {

// The left edge of a column of the board and the top edge of a row, in pixels; the shake is in
// them. Columns and rows need not lie on the board.
inline double cell_left(double column) {
  return BX + CELL * column;
}
inline double cell_left(int64_t column) {
  return cell_left(static_cast<double>(column));
}
inline double cell_top(double row) {
  return BY + CELL * row;
}
inline double cell_top(int64_t row) {
  return cell_top(static_cast<double>(row));
}

// Calls visit(row, column), which gives an Out<>, for every occupied cell of a 4 x 4 shape.
template<typename Visit>
Out<> for_each_block(const Array& shape, Visit visit) {
  for (int64_t row = 0; row < 4; ++row)
    for (int64_t column = 0; column < 4; ++column)
      if (is_occupied(shape.get(), row, column))
        DO(visit(row, column));
  return {};
}

} // namespace kavo
