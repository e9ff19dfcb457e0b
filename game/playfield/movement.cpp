#include "game/playfield/movement.h"

#include "game/commands.h"
#include "game/frame_scope.h"
#include "game/playfield/locking.h"
#include "game/presentation/effects.h"
#include "game/state.h"

namespace kavo {

namespace {

bool is_blocked(int64_t column, int64_t row) {
  if (column < 0 || column >= COLS || row >= ROWS)
    return true;
  return row >= 0 && is_occupied(BOARD.get(), row, column);
}

Out<bool> fits_at(const Array& shape, int64_t x, int64_t y) {
  return TRY(CHECKCOLLISION(shape, static_cast<double>(x), static_cast<double>(y))) == 0.0;
}

Out<> leave_streaks(int64_t start_row) {
  for (int64_t row = 0; row < 4; ++row) {
    for (int64_t column = 0; column < 4; ++column) {
      if (!is_occupied(CURRENTPIECE.get(), row, column))
        continue;
      const double x = BX + static_cast<double>(CELL * (PIECEX + column)) + CELL / 2.0;
      const double top = BY + static_cast<double>((start_row + row) * CELL);
      const double bottom = BY + static_cast<double>((PIECEY + row) * CELL);
      DO(ADDSTREAK(x, top, bottom));
    }
  }
  return {};
}

} // namespace

Out<double> CHECKCOLLISION(const Array& shape, double x, double y) {
  ENTER();
  const int64_t left = qor_int(x);
  const int64_t top = qor_int(y);
  for (int64_t row = 0; row < 4; ++row)
    for (int64_t column = 0; column < 4; ++column)
      if (TRY(is_occupied(shape.get(), row, column) && is_blocked(left + column, top + row)))
        return 1.0;
  return 0.0;
}

Out<Array> ROTATEMATRIX(const Array& matrix) {
  ENTER();
  return reverse_rows(TRY(command::transpose(matrix.get())));
}

Out<> TRYROTATE() {
  ENTER();
  Array turned = TRY(ROTATEMATRIX(CURRENTPIECE));
  for (const int64_t kick : {0, -1, 1}) {
    if (!TRY(fits_at(turned, PIECEX + kick, PIECEY)))
      continue;
    DO(PIECEX += kick);
    DO(CURRENTPIECE = std::move(turned));
    return {};
  }
  return {};
}

Out<double> GHOSTY() {
  ENTER();
  FrameScope scope;
  int64_t row = PIECEY;
  while (row <= ROWS && TRY(fits_at(CURRENTPIECE, PIECEX, row + 1))) {
    DO(row += 1);
    scope.next_pass();
  }
  return static_cast<double>(row);
}

Out<> HARDDROP() {
  ENTER();
  const int64_t start_row = PIECEY;
  {
    FrameScope scope;
    while (TRY(fits_at(CURRENTPIECE, PIECEX, PIECEY + 1))) {
      DO(PIECEY += 1);
      scope.next_pass();
    }
  }
  DO(leave_streaks(start_row));
  DO(LOCKSEQUENCE());
  return {};
}

} // namespace kavo
