#include "game/playfield/new_game.h"

#include "game/commands.h"
#include "game/playfield/pieces.h"
#include "game/state.h"

namespace kavo {

namespace {

void clear_all(QorArray* pool, int64_t count) {
  for (int64_t slot = 0; slot < count; ++slot)
    qor_array_set(pool, slot, 0.0);
}

} // namespace

Out<> RESETGAME() {
  ENTER();
  DO(ROWS = 15);
  DO(COLS = 10);
  const Array zero = numbers({0});
  const Array shape = numbers({15, 10});
  DO(BOARD = TRY(command::reshape(zero.get(), shape.get())));
  SCORE = LINESCLEARED = 0;
  LEVEL = 1;
  GAMEOVER = false;
  COMBO = CLEAREDTURN = COMBOFLASH = SHOCKLIFE = 0;
  KAVOARMED = true;
  REARMIN = LIGHTNING = 0;
  clear_all(PAR_LIFE.get(), NPART);
  clear_all(STAR_ON.get(), NSTAR);
  clear_all(POP_LIFE.get(), NPOP);
  clear_all(STR_LIFE.get(), NSTREAK);
  DO(ROLLNEXT());
  DO(SPAWNPIECE());
  DO(LASTDROP = qor_tick());
  return {};
}

} // namespace kavo
