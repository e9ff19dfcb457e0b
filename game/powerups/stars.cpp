#include "game/powerups/stars.h"

#include "game/audio/sounds.h"
#include "game/board/geometry.h"
#include "game/commands.h"
#include "game/presentation/effects.h"
#include "game/state.h"

namespace kavo {

namespace {

int64_t first_free_slot() {
  int64_t slot = 0;
  while (slot < NSTAR && qor_array_get(STAR_ON.get(), slot) != 0.0)
    ++slot;
  return slot;
}

bool star_is_at(int64_t slot, int64_t row, int64_t column) {
  return qor_array_get(STAR_ON.get(), slot) == 1.0 &&
         qor_array_get(STAR_R.get(), slot) == static_cast<double>(row) &&
         qor_array_get(STAR_C.get(), slot) == static_cast<double>(column);
}

Out<> collect(int64_t slot, int64_t row, int64_t column) {
  const double left = cell_left(column);
  const double top = cell_top(row);
  DO(qor_array_set(STAR_ON.get(), slot, 0.0));
  DO(SCORE += 250);
  DO(ADDPOPUP(left, top, 250));
  DO(BURST(left + CELL / 2.0, top + CELL / 2.0, 14, 5, 250, 225, 90));
  DO(SFXCLEAR());
  return {};
}

Out<> collect_at(int64_t row, int64_t column) {
  for (int64_t slot = 0; slot < NSTAR; ++slot)
    if (star_is_at(slot, row, column))
      DO(collect(slot, row, column));
  return {};
}

} // namespace

Out<> SPAWNSTAR() {
  ENTER();
  const int64_t row = qor_int(TRY(command::rnd(1)) * static_cast<double>(ROWS) * 0.5) + 2;
  const int64_t column = qor_int(TRY(command::rnd(1)) * static_cast<double>(COLS));
  if (is_occupied(BOARD.get(), row, column))
    return {};
  const int64_t slot = first_free_slot();
  if (slot == NSTAR)
    return {};
  DO(qor_array_set(STAR_R.get(), slot, static_cast<double>(row)));
  DO(qor_array_set(STAR_C.get(), slot, static_cast<double>(column)));
  DO(qor_array_set(STAR_ON.get(), slot, 1.0));
  return {};
}

Out<> COLLECTSTARS() {
  ENTER();
  return for_each_block(CURRENTPIECE, [](int64_t row, int64_t column) {
    return collect_at(PIECEY + row, PIECEX + column);
  });
}

} // namespace kavo
