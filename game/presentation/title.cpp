#include "game/presentation/title.h"

#include "game/commands.h"
#include "game/presentation/sky.h"
#include "game/state.h"

namespace kavo {

namespace {

Out<> draw_table_row(int64_t slot) {
  DO(command::draw_color(210, 215, 225));
  const Text rank(qor_int_to_str(slot + 1));
  const Text ranked = concat(chars(rank), ".   ");
  const Text named = concat(chars(ranked), qor_array_get_str(HS_NAME.get(), slot));
  const Text spaced = concat(chars(named), "    ");
  const Text score(qor_double_to_str(number_at(HS_SCORE.get(), slot)));
  const Text row = concat(chars(spaced), chars(score));
  DO(command::text(AX + 55, 270 + 30 * slot, chars(row)));
  return {};
}

} // namespace

Out<> DRAWTITLE() {
  ENTER();
  DO(draw_menu_background());
  DO(command::draw_color(245, 245, 255));
  DO(command::text(AX + 90, 120, "K A V O"));
  DO(command::draw_color(170, 190, 210));
  DO(command::text(AX + 60, 158, "- Schlagseite -"));
  DO(command::draw_color(200, 210, 160));
  DO(command::text(AX + 80, 230, "HIGHSCORES"));
  for (int64_t slot = 0; slot < 5; ++slot)
    DO(draw_table_row(slot));
  DO(command::draw_color(250, 230, 120));
  DO(command::text(AX + 70, 470, "SPACE = Start"));
  DO(command::draw_color(160, 175, 190));
  DO(command::text(AX + 20, 510, "O = Optionen   M = Musik   ESC = Beenden"));
  return {};
}

} // namespace kavo
