// One frame of every effect: age it, draw it. Each live entry is visited once per frame.
#include "game/commands.h"
#include "game/presentation/effects.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double gold_from = 200.0; // popups of at least this value are gold
constexpr double gravity = 0.18;    // pixels per frame per frame

double at(const Array& pool, int64_t slot) {
  return qor_array_get(pool.get(), slot);
}

void add(const Array& pool, int64_t slot, double amount) {
  qor_array_set(pool.get(), slot, at(pool, slot) + amount);
}

Out<> set_popup_color(double value, double freshness) {
  if (value >= gold_from) {
    DO(command::draw_color(qor_cint(135 * freshness + 120), qor_cint(125 * freshness + 90), 40));
    return {};
  }
  const int64_t pale = qor_cint(175 * freshness + 80);
  DO(command::draw_color(pale, pale, 90));
  return {};
}

Out<> draw_popup(int64_t slot) {
  DO(add(POP_Y, slot, -1.4));
  DO(add(POP_LIFE, slot, -1.0));
  DO(set_popup_color(at(POP_VAL, slot), at(POP_LIFE, slot) / popup_life));
  const Text points = label("+", qor_cint(at(POP_VAL, slot)));
  DO(command::text(qor_cint(at(POP_X, slot)), qor_cint(at(POP_Y, slot)), chars(points)));
  return {};
}

Out<> draw_particle(int64_t slot) {
  DO(add(PAR_X, slot, at(PAR_VX, slot)));
  DO(add(PAR_Y, slot, at(PAR_VY, slot)));
  DO(add(PAR_VY, slot, gravity));
  DO(add(PAR_LIFE, slot, -1.0));
  DO(command::draw_color(at(PAR_R, slot), at(PAR_G, slot), at(PAR_B, slot)));
  DO(command::rect(qor_cint(at(PAR_X, slot)), qor_cint(at(PAR_Y, slot)), 3, 3, 1));
  return {};
}

Out<> draw_streak(int64_t slot) {
  const int64_t bright = qor_cint(at(STR_LIFE, slot) * 0.125 * 120 + 120);
  DO(command::draw_color(bright, bright, 170));
  DO(command::line(at(STR_X, slot), at(STR_Y0, slot), at(STR_X, slot), at(STR_Y1, slot)));
  DO(add(STR_LIFE, slot, -1.0));
  return {};
}

// Falls 6 pixels and drifts half a pixel per millisecond; each coordinate reads the clock anew.
Out<> draw_drop(int64_t drop) {
  const int64_t x = remainder_of(qor_int(qor_tick() * 0.5) + 53 * drop, SCRW);
  const int64_t y = remainder_of(qor_int(qor_tick() * 6) + 80 * drop, SCRH);
  DO(command::line(static_cast<double>(x), static_cast<double>(y), static_cast<double>(x - 3),
                   static_cast<double>(y + 12)));
  return {};
}

} // namespace

Out<> draw_popups() {
  for (int64_t slot = 0; slot < NPOP; ++slot)
    if (at(POP_LIFE, slot) > 0.0)
      DO(draw_popup(slot));
  return {};
}

Out<> draw_particles() {
  for (int64_t slot = 0; slot < NPART; ++slot)
    if (at(PAR_LIFE, slot) > 0.0)
      DO(draw_particle(slot));
  return {};
}

Out<> draw_streaks() {
  for (int64_t slot = 0; slot < NSTREAK; ++slot)
    if (at(STR_LIFE, slot) > 0.0)
      DO(draw_streak(slot));
  return {};
}

Out<> draw_shock_square() {
  if (SHOCKLIFE <= 0)
    return {};
  DO(command::draw_color(255, 180, 80));
  const int64_t half = (17 - SHOCKLIFE) * 11;
  DO(command::rect(SHOCKX - static_cast<double>(half), SHOCKY - static_cast<double>(half), 2 * half,
                   2 * half, 0));
  DO(SHOCKLIFE -= 1);
  return {};
}

Out<> draw_rain() {
  DO(command::draw_color(120, 140, 180));
  for (int64_t drop = 0; drop < 25; ++drop)
    DO(draw_drop(drop));
  return {};
}

Out<> maybe_start_lightning() {
  if (LIGHTNING >= 1 || TRY(command::rnd(1)) >= 0.02)
    return {};
  DO(LIGHTNING = 3);
  DO(BOLTX = qor_int(TRY(command::rnd(1)) * static_cast<double>(SCRW - 160)) + 80);
  return {};
}

Out<> draw_lightning() {
  if (LIGHTNING <= 0)
    return {};
  DO(command::draw_color(235, 240, 255));
  auto x = static_cast<double>(BOLTX);
  for (int64_t y = 0; y < 330; y += 55) {
    const double next = x + static_cast<double>(qor_int(TRY(command::rnd(1)) * 44) - 22);
    DO(command::line(x, static_cast<double>(y), next, static_cast<double>(y + 55)));
    x = next;
  }
  DO(LIGHTNING -= 1);
  return {};
}

} // namespace kavo
