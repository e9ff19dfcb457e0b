#include "game/playfield/locking.h"

#include "game/audio/sounds.h"
#include "game/board/collision.h"
#include "game/board/geometry.h"
#include "game/board/kinds.h"
#include "game/board/pull.h"
#include "game/clearing/lines.h"
#include "game/commands.h"
#include "game/playfield/lean.h"
#include "game/playfield/pieces.h"
#include "game/powerups/powerups.h"
#include "game/powerups/stars.h"
#include "game/presentation/effects.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr int64_t balance_bonus = 20;
constexpr double star_chance = 0.3;

Out<> lock_cell(int64_t row, int64_t column) {
  if (row < 0 || row >= ROWS || column < 0 || column >= COLS)
    return {};
  put_cell(BOARD.get(), row, column, static_cast<double>(PIECECOLOR));
  if (PIECECOLOR < kind::first_special || PIECECOLOR == kind::heavy)
    return {};
  PUKIND = PIECECOLOR;
  PUBR = row;
  PUBC = column;
  return {};
}

Out<> throw_landing_dust() {
  DO(BURST(cell_left(static_cast<double>(PIECEX) + 1.5), cell_top(PIECEY + 2), 5, 2, 170, 160,
           140));
  return {};
}

Out<> score_piece() {
  DO(PTS = qor_cint(TRY(PIECE_POINTS(static_cast<double>(PIECECOLOR)))));
  DO(SCORE += PTS);
  if (PTS > 0)
    DO(ADDPOPUP(cell_left(PIECEX + 1), cell_top(PIECEY + 1), static_cast<double>(PTS)));
  return {};
}

Out<> pay_balance_bonus() {
  if (qor_abs(TRY(TORQUE())) < static_cast<double>(KAVO_LOW))
    DO(SCORE += balance_bonus);
  return {};
}

Out<> pay_combo_bonus() {
  if (CLEAREDTURN <= 0) {
    DO(COMBO = 0);
    return {};
  }
  DO(COMBO += 1);
  if (COMBO <= 1)
    return {};
  DO(CBONUS = 75 * COMBO - 75);
  DO(SCORE += CBONUS);
  DO(COMBOSHOW = COMBO);
  DO(COMBOFLASH = 45);
  DO(SHOCKLIFE = 16);
  DO(SHOCKX = AX + AREA / 2.0);
  DO(SHOCKY = AY + AREA / 2.0);
  return {};
}

Out<> maybe_spawn_star() {
  if (TRY(command::rnd(1)) < star_chance)
    DO(SPAWNSTAR());
  return {};
}

Out<> bring_in_next_piece() {
  DO(SPAWNPIECE());
  if (TRY(fits(CURRENTPIECE, PIECEX, PIECEY)))
    return {};
  DO(GAMEOVER = true);
  DO(SFXOVER());
  return {};
}

} // namespace

Out<> LOCKSEQUENCE() {
  ENTER();
  DO(CLEAREDTURN = 0);
  DO(PUKIND = 0);
  DO(LOCKPIECE());
  if (PUKIND > 0)
    DO(TRIGGERPOWERUP(static_cast<double>(PUKIND), static_cast<double>(PUBR),
                      static_cast<double>(PUBC)));
  DO(SFXLOCK());
  DO(throw_landing_dust());
  DO(score_piece());
  DO(CLEARLINES());
  DO(APPLYKAVO());
  DO(pay_balance_bonus());
  DO(pay_combo_bonus());
  DO(maybe_spawn_star());
  DO(bring_in_next_piece());
  return {};
}

Out<> LOCKPIECE() {
  ENTER();
  return for_each_block(CURRENTPIECE, [](int64_t row, int64_t column) {
    return lock_cell(PIECEY + row, PIECEX + column);
  });
}

} // namespace kavo
