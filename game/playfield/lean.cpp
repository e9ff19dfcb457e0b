#include "game/playfield/lean.h"

#include "game/audio/sounds.h"
#include "game/board/pull.h"
#include "game/clearing/lines.h"
#include "game/commands.h"
#include "game/presentation/turning_board.h"
#include "game/state.h"

namespace kavo {

namespace {

Out<> tip_right() {
  DO(SFXKAVO());
  DO(ANIMATEKAVO(1.0));
  const SharedRows upside_down = reversed_rows(BOARD);
  DO(BOARD = TRY(command::transpose(upside_down.get())));
  return {};
}

Out<> tip_left() {
  DO(SFXKAVO());
  DO(ANIMATEKAVO(-1.0));
  DO(BOARD = reverse_rows(TRY(command::transpose(BOARD.get()))));
  return {};
}

Out<> come_to_rest() {
  DO(TMP = ROWS);
  DO(ROWS = COLS);
  DO(COLS = TMP);
  DO(SETTLEDOWN());
  DO(CLEARLINES());
  DO(KAVOARMED = false);
  DO(REARMIN = qor_int(TRY(command::rnd(1)) * 4) + 2);
  DO(SHAKE = 16);
  DO(FLASH = 18);
  return {};
}

Out<> count_rest_down() {
  DO(REARMIN -= 1);
  if (REARMIN < 1)
    DO(KAVOARMED = true);
  return {};
}

} // namespace

Out<> APPLYKAVO() {
  ENTER();
  const double pull = TRY(TORQUE());
  if (!KAVOARMED) {
    DO(count_rest_down());
    return {};
  }
  if (pull > static_cast<double>(KAVO_HIGH))
    DO(tip_right());
  else if (pull < -static_cast<double>(KAVO_HIGH))
    DO(tip_left());
  else
    return {};
  DO(come_to_rest());
  return {};
}

} // namespace kavo
