#include "game/clearing/lines.h"

#include <vector>

#include "game/audio/sounds.h"
#include "game/board/geometry.h"
#include "game/commands.h"
#include "game/presentation/effects.h"
#include "game/presentation/flashing_rows.h"
#include "game/state.h"

namespace kavo {

namespace {

bool is_full(int64_t row) {
  for (int64_t column = 0; column < COLS; ++column)
    if (!is_occupied(BOARD.get(), row, column))
      return false;
  return true;
}

std::vector<int64_t> full_rows() {
  std::vector<int64_t> rows;
  for (int64_t row = 0; row < ROWS; ++row)
    if (is_full(row))
      rows.push_back(row);
  return rows;
}

Out<> throw_sparks(const std::vector<int64_t>& rows) {
  for (const int64_t row : rows)
    for (int64_t column = 0; column < COLS; column += 2)
      DO(BURST(cell_left(column) + CELL / 2.0, cell_top(row) + CELL / 2.0, 3, 5, 250, 250, 200));
  return {};
}

// The board refilled from the top with `missing` empty rows above the kept ones.
Out<Array> refill(const SharedRows& kept, int64_t missing) {
  const Array zero = numbers({0});
  const Array width = numbers({static_cast<double>(COLS)});
  const Array empty_row = TRY(command::reshape(zero.get(), width.get()));
  Array board = TRY(command::mvins(kept.get(), 0, 0, empty_row.get()));
  for (int64_t inserted = 1; inserted < missing; ++inserted)
    DO(board = TRY(command::mvins(board.get(), 0, 0, empty_row.get())));
  return board;
}

Out<> score_cleared_rows() {
  DO(LINESCLEARED += CLEARED);
  DO(CLEAREDTURN += CLEARED);
  DO(GAIN = CLEARED * CLEARED * 100);
  DO(SCORE += GAIN);
  DO(LEVEL = LINESCLEARED / 10 + 1);
  DO(SFXCLEAR());
  DO(ADDPOPUP(cell_left(static_cast<double>(COLS) / 2.0) - 16,
              cell_top(static_cast<double>(ROWS) / 2.0), static_cast<double>(GAIN)));
  return {};
}

Out<> settle_column(int64_t column) {
  int64_t lowest_free = ROWS - 1;
  for (int64_t row = ROWS - 1; row >= 0; --row) {
    if (!is_occupied(BOARD.get(), row, column))
      continue;
    const auto* cells = static_cast<const QorArray*>(qor_array_get_ptr(BOARD.get(), row));
    DO(V = element(cells, column));
    DO(put_cell(BOARD.get(), row, column, 0.0));
    DO(put_cell(BOARD.get(), lowest_free, column, V));
    DO(lowest_free -= 1);
  }
  return {};
}

} // namespace

// NOLINTNEXTLINE(bugprone-reserved-identifier): the routine's own name
double __lambda_0(double row_slot) {
  ENTER();
  const auto* row = static_cast<const QorArray*>(qor_reference_in({.f64 = row_slot}));
  return TRY(qor_array_min(row)) == 0.0 ? 1.0 : 0.0;
}

Out<> CLEARLINES() {
  ENTER();
  const std::vector<int64_t> rows = full_rows();
  if (!rows.empty())
    DO(flash_rows(rows));
  DO(throw_sparks(rows));
  const SharedRows kept(qor_filter_fn(__lambda_0, BOARD.get()));
  DO(CLEARED = ROWS - qor_array_len(kept.get()));
  if (CLEARED <= 0)
    return {};
  DO(BOARD = TRY(refill(kept, CLEARED)));
  DO(score_cleared_rows());
  return {};
}

Out<> SETTLEDOWN() {
  ENTER();
  for (int64_t column = 0; column < COLS; ++column)
    DO(settle_column(column));
  return {};
}

} // namespace kavo
