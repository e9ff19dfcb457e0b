#include "game/board/collision.h"

#include "game/frame_scope.h"
#include "game/state.h"

namespace kavo {

namespace {

bool is_blocked(int64_t column, int64_t row) {
  if (column < 0 || column >= COLS || row >= ROWS)
    return true;
  return row >= 0 && is_occupied(BOARD.get(), row, column);
}

} // namespace

Out<double> CHECKCOLLISION(const Array& shape, double x, double y) {
  ENTER();
  for (int64_t row = 0; row < 4; ++row)
    for (int64_t column = 0; column < 4; ++column)
      if (TRY(is_occupied(shape.get(), row, column) &&
              is_blocked(qor_int(static_cast<double>(column) + x),
                         qor_int(static_cast<double>(row) + y))))
        return 1.0;
  return 0.0;
}

Out<bool> fits(const Array& shape, int64_t x, int64_t y) {
  return TRY(CHECKCOLLISION(shape, static_cast<double>(x), static_cast<double>(y))) == 0.0;
}

Out<double> GHOSTY() {
  ENTER();
  FrameScope scope;
  int64_t row = PIECEY;
  while (row <= ROWS && TRY(fits(CURRENTPIECE, PIECEX, row + 1))) {
    DO(row += 1);
    scope.next_pass();
  }
  return static_cast<double>(row);
}

} // namespace kavo
