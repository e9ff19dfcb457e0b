#include "game/presentation/entry.h"

#include "game/commands.h"
#include "game/highscores/entry.h"
#include "game/presentation/sky.h"
#include "game/state.h"

namespace kavo {

namespace {

Out<> draw_letter(int64_t position) {
  if (position == ENTERPOS)
    DO(command::draw_color(250, 230, 120));
  else
    DO(command::draw_color(200, 210, 220));
  const Text letter = TRY(ENTER_CHAR$(qor_array_get(ENTERNAME.get(), position)));
  const bool is_blank = qor_str_eq(chars(letter), " ") != 0;
  DO(command::text(AX + 120 + static_cast<double>(60 * position), 290,
                   is_blank ? "_" : chars(letter)));
  return {};
}

} // namespace

Out<> DRAWENTER() {
  ENTER();
  DO(draw_menu_background());
  DO(command::draw_color(250, 230, 120));
  DO(command::text(AX + 40, 150, "NEUER HIGHSCORE!"));
  DO(command::draw_color(220, 225, 235));
  const Text points = label("Punkte: ", SCORE);
  DO(command::text(AX + 90, 200, chars(points)));
  for (int64_t position = 0; position < 3; ++position)
    DO(draw_letter(position));
  DO(command::draw_color(160, 175, 190));
  DO(command::text(AX + 30, 380, "Hoch/Runter = Buchstabe (inkl. Leer)"));
  DO(command::text(AX + 30, 410, "Links/Rechts = Stelle, Enter = OK"));
  return {};
}

} // namespace kavo
