#include "bench/storm.h"

#include <cstdlib>
#include <random>
#include <utility>

#include "game/commands.h"
#include "game/playfield/new_game.h"
#include "game/presentation/effects.h"
#include "game/presentation/frame.h"
#include "game/state.h"
#include "tests/game/pools.h"

namespace kavo::bench {

namespace {

void run(Out<>) {
  error_is_pending();
}

} // namespace

void start_storm() {
  setenv("QORRT_SEED", "1", 1);
  set_geometry();
  qor_runtime_set_handle(qorrt_init(0, nullptr));
  run(command::screen(SCRW, SCRH, "bench", 1));
  set_initial_values();
  run(RESETGAME());
  raise_storm();
}

void draw_storm_frame() {
  keep_storm_alive();
  draw_frame();
}

void draw_frame() {
  run(DRAW());
  if (qor_err_code() != 0)
    qor_throw_uncaught();
}

void raise_storm() {
  std::mt19937_64 random(1);
  for (int64_t row = 1; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      if (random() % 10 < 6)
        put_cell(BOARD.get(), row, column, static_cast<double>(random() % 12 + 1));
  for (int64_t slot = 0; slot < NSTAR; ++slot)
    kavo::test::put_star(slot, slot + 2, slot);
}

void keep_storm_alive() {
  kavo::test::fill_particle_pool();
  for (int64_t slot = 0; slot < NPOP; ++slot)
    run(ADDPOPUP(100, 100, 250));
  for (int64_t slot = 0; slot < NSTREAK; ++slot)
    run(ADDSTREAK(100, 100, 400));
  LIGHTNING = 3;
  SHAKE = 16;
  FLASH = 18;
  COMBOFLASH = 45;
  SHOCKLIFE = 16;
}

void keep_effects(int64_t count) {
  const int64_t all = NPART + NPOP + NSTREAK;
  const auto keep_share = [&](const Array& lives, int64_t slots) {
    for (int64_t slot = slots * count / all; slot < slots; ++slot)
      qor_array_set(lives.get(), slot, 0.0);
  };
  keep_share(PAR_LIFE, NPART);
  keep_share(POP_LIFE, NPOP);
  keep_share(STR_LIFE, NSTREAK);
}

void tip_board() {
  // NOLINTBEGIN(readability-suspicious-call-argument): rows become columns here
  Array tipped = zero_matrix(COLS, ROWS);
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      put_cell(tipped.get(), column, row, cell_at(BOARD.get(), row, column));
  // NOLINTEND(readability-suspicious-call-argument)
  BOARD = std::move(tipped);
  std::swap(ROWS, COLS);
}

} // namespace kavo::bench
