#include "game/presentation/options.h"

#include "game/commands.h"
#include "game/presentation/sky.h"
#include "game/state.h"

namespace kavo {

namespace {

Out<> draw_switch(int64_t row, int64_t y, const char* name, int64_t is_on) {
  if (OPTSEL == row)
    DO(command::draw_color(250, 230, 120));
  else
    DO(command::draw_color(200, 210, 220));
  const Text line = concat(name, is_on != 0 ? "an" : "aus");
  DO(command::text(AX + 70, y, chars(line)));
  return {};
}

} // namespace

Out<> DRAWOPTIONS() {
  ENTER();
  DO(draw_menu_background());
  DO(command::draw_color(245, 245, 255));
  DO(command::text(AX + 90, 150, "OPTIONEN"));
  DO(draw_switch(0, 250, "Musik:  ", MUSICON));
  DO(draw_switch(1, 290, "Sound:  ", SFXON));
  DO(command::draw_color(160, 175, 190));
  DO(command::text(AX + 30, 380, "Hoch/Runter waehlen, Enter umschalten"));
  DO(command::text(AX + 30, 410, "ESC = zurueck"));
  return {};
}

} // namespace kavo
