#include "game/presentation/hud.h"

#include <algorithm>

#include "game/board/pull.h"
#include "game/commands.h"
#include "game/presentation/cells.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double meter_scale = 2.0; // pixels per unit of pull
constexpr double meter_half = 130.0;

Out<> draw_top_lines() {
  DO(command::draw_color(235, 235, 245));
  DO(command::text(AX, 28, "KAVO - Schlagseite"));
  DO(command::draw_color(200, 210, 160));
  const Text points(qor_double_to_str(number_at(HS_SCORE.get(), 0)));
  const Text best = concat("Best: ", chars(points));
  DO(command::text(AX + AREA - 150, 28, chars(best)));
  DO(command::draw_color(150, 165, 180));
  DO(command::text(AX, 52, "Pfeile/WASD  Space=Drop  M=Musik  ESC=Ende"));
  return {};
}

Out<> draw_counter(double y, const char* name, int64_t value) {
  const Text counter = label(name, value);
  DO(command::text(AX, y, chars(counter)));
  return {};
}

Out<> draw_counters() {
  DO(command::draw_color(180, 195, 210));
  DO(draw_counter(AY + AREA + 22, "Score:  ", SCORE));
  DO(draw_counter(AY + AREA + 44, "Reihen: ", LINESCLEARED));
  DO(draw_counter(AY + AREA + 66, "Level:  ", LEVEL));
  return {};
}

Out<> draw_preview() {
  DO(command::draw_color(150, 165, 180));
  DO(command::text(AX + 474, AY + AREA + 6, "Naechste"));
  DO(DRAWMINI(static_cast<double>(NEXTCOLOR), AX + 478, AY + AREA + 24, 13, NEXTPIECE));
  return {};
}

Out<> draw_meter_scale(double x, double y) {
  DO(command::draw_color(50, 62, 78));
  DO(command::rect(x - meter_half, y, 260, 12, 1));
  DO(command::draw_color(150, 70, 70));
  const auto mark = static_cast<double>(qor_cint(meter_scale * KAVO_HIGH));
  DO(command::rect(x - mark, y - 4, 3, 20, 1));
  DO(command::rect(x + mark, y - 4, 3, 20, 1));
  return {};
}

Out<> draw_meter_needle(double x, double y) {
  const double pull = std::clamp(meter_scale * TRY(TORQUE()), -meter_half, meter_half);
  if (KAVOARMED)
    DO(command::draw_color(240, 225, 120));
  else
    DO(command::draw_color(120, 130, 145));
  DO(command::rect(x + static_cast<double>(qor_cint(pull)) - 3, y - 6, 6, 24, 1));
  return {};
}

Out<> draw_meter() {
  const double x = AX + AREA / 2.0;
  const double y = AY + AREA + 96;
  DO(draw_meter_scale(x, y));
  DO(draw_meter_needle(x, y));
  DO(command::draw_color(150, 165, 180));
  DO(command::text(x - 40, y - 26, "Schlagseite"));
  if (KAVOARMED)
    return {};
  DO(command::draw_color(130, 145, 160));
  const Text rest = label("wieder scharf in ", REARMIN);
  DO(command::text(x - 56, y + 22, chars(rest)));
  return {};
}

Out<> draw_tip_over_banner() {
  if (FLASH <= 0)
    return {};
  DO(command::draw_color(250, 230, 90));
  DO(command::text(AX + 175, AY + 210, "* SCHLAGSEITE! *"));
  DO(FLASH -= 1);
  return {};
}

Out<> draw_combo_banner() {
  if (COMBOFLASH <= 0)
    return {};
  DO(command::draw_color(255, 180, 80));
  const Text banner = label("COMBO x", COMBOSHOW);
  DO(command::text(AX + 210, AY + 300, chars(banner)));
  DO(COMBOFLASH -= 1);
  return {};
}

Out<> draw_pause_box() {
  DO(command::draw_color(20, 24, 34));
  DO(command::rect(AX + 160, AY + 230, 220, 80, 1));
  DO(command::draw_color(250, 230, 120));
  DO(command::text(AX + 222, AY + 258, "PAUSE"));
  DO(command::draw_color(180, 195, 210));
  DO(command::text(AX + 178, AY + 284, "P = weiter   ESC = Titel"));
  return {};
}

} // namespace

Out<> draw_hud() {
  DO(draw_top_lines());
  DO(draw_counters());
  DO(draw_preview());
  DO(draw_meter());
  return {};
}

Out<> draw_banners() {
  DO(draw_tip_over_banner());
  DO(draw_combo_banner());
  return {};
}

Out<> draw_overlays() {
  if (GAMEOVER) {
    DO(command::draw_color(240, 90, 90));
    DO(command::text(AX + 190, AY + 270, "GAME OVER"));
  }
  if (state_is("pause"))
    DO(draw_pause_box());
  return {};
}

} // namespace kavo
