#include "game/powerups/powerups.h"

#include "game/audio/sounds.h"
#include "game/board/geometry.h"
#include "game/board/kinds.h"
#include "game/clearing/lines.h"
#include "game/presentation/effects.h"
#include "game/state.h"

namespace kavo {

namespace {

// Where a power-up came to rest.
struct Cell {
  int64_t row;
  int64_t column;

  double left() const { return cell_left(column); }
  double top() const { return cell_top(row); }
};

void empty_cell(int64_t row, int64_t column) {
  if (row >= 0 && row < ROWS && column >= 0 && column < COLS)
    put_cell(BOARD.get(), row, column, 0.0);
}

Out<> award(const Cell& at, int64_t points) {
  DO(SCORE += points);
  DO(ADDPOPUP(at.left(), at.top(), static_cast<double>(points)));
  return {};
}

Out<> explode(const Cell& at) {
  for (int64_t row = at.row - 1; row <= at.row + 1; ++row)
    for (int64_t column = at.column - 1; column <= at.column + 1; ++column)
      DO(empty_cell(row, column));
  DO(award(at, 150));
  DO(SHAKE = 18);
  DO(FLASH = 14);
  DO(BURST(at.left() + CELL / 2.0, at.top() + CELL / 2.0, 26, 7, 250, 160, 60));
  DO(SFXKAVO());
  return {};
}

Out<> blast_row_and_column(const Cell& at) {
  for (int64_t column = 0; column < COLS; ++column)
    DO(empty_cell(at.row, column));
  for (int64_t row = 0; row < ROWS; ++row)
    DO(empty_cell(row, at.column));
  DO(award(at, 250));
  DO(SHAKE = 16);
  DO(FLASH = 14);
  DO(SFXCLEAR());
  return {};
}

Out<> cash_in(const Cell& at) {
  DO(empty_cell(at.row, at.column));
  DO(award(at, 500));
  DO(SFXCLEAR());
  return {};
}

Out<> fill_row(const Cell& at) {
  for (int64_t column = 0; column < COLS; ++column)
    if (!is_occupied(BOARD.get(), at.row, column))
      DO(put_cell(BOARD.get(), at.row, column, kind::filling));
  DO(award(at, 100));
  DO(FLASH = 14);
  DO(SFXCLEAR());
  return {};
}

} // namespace

Out<> TRIGGERPOWERUP(double kind, double row, double column) {
  ENTER();
  const Cell at{qor_int(row), qor_int(column)};
  if (kind == kind::bomb)
    DO(explode(at));
  else if (kind == kind::cross_line)
    DO(blast_row_and_column(at));
  else if (kind == kind::coin)
    DO(cash_in(at));
  else if (kind == kind::row_filler)
    DO(fill_row(at));
  // Settling first is what lets a filled row fall apart before it could be cleared.
  DO(SETTLEDOWN());
  DO(CLEARLINES());
  return {};
}

} // namespace kavo
