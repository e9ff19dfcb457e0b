#include "game/presentation/effects.h"

#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr double full_circle = 6.2832; // rounded by design, not two pi
constexpr double upward_kick = 1.2;
constexpr double streak_life = 8.0;

// The first slot whose life has run out, or `count` when the pool is full.
int64_t free_slot(const Array& lives, int64_t count) {
  int64_t slot = 0;
  while (slot < count && qor_array_get(lives.get(), slot) > 0.0)
    ++slot;
  return slot;
}

Out<> throw_particle(double x, double y, double speed, double red, double green, double blue) {
  const double angle = TRY(command::rnd(1)) * full_circle;
  const double launch = (TRY(command::rnd(1)) + 0.4) * speed;
  const double vx = launch * qor_cos(angle);
  const double vy = launch * qor_sin(angle) - upward_kick;
  const int64_t life = qor_int(TRY(command::rnd(1)) * 14) + 22;
  DO(ADDPART(x, y, vx, vy, static_cast<double>(life), red, green, blue));
  return {};
}

} // namespace

Out<> BURST(double x, double y, double count, double speed, double red, double green, double blue) {
  ENTER();
  const int64_t particles = qor_int(count);
  for (int64_t thrown = 0; thrown < particles; ++thrown)
    DO(throw_particle(x, y, speed, red, green, blue));
  return {};
}

Out<> ADDPART(double x, double y, double vx, double vy, double life, double red, double green,
              double blue) {
  ENTER();
  const int64_t slot = free_slot(PAR_LIFE, NPART);
  if (slot == NPART)
    return {};
  DO(qor_array_set(PAR_X.get(), slot, x));
  DO(qor_array_set(PAR_Y.get(), slot, y));
  DO(qor_array_set(PAR_VX.get(), slot, vx));
  DO(qor_array_set(PAR_VY.get(), slot, vy));
  DO(qor_array_set(PAR_LIFE.get(), slot, life));
  DO(qor_array_set(PAR_R.get(), slot, red));
  DO(qor_array_set(PAR_G.get(), slot, green));
  DO(qor_array_set(PAR_B.get(), slot, blue));
  return {};
}

Out<> ADDPOPUP(double x, double y, double value) {
  ENTER();
  const int64_t slot = free_slot(POP_LIFE, NPOP);
  if (slot == NPOP)
    return {};
  DO(qor_array_set(POP_X.get(), slot, x));
  DO(qor_array_set(POP_Y.get(), slot, y));
  DO(qor_array_set(POP_VAL.get(), slot, value));
  DO(qor_array_set(POP_LIFE.get(), slot, popup_life));
  return {};
}

Out<> ADDSTREAK(double x, double top, double bottom) {
  ENTER();
  const int64_t slot = free_slot(STR_LIFE, NSTREAK);
  if (slot == NSTREAK)
    return {};
  DO(qor_array_set(STR_X.get(), slot, x));
  DO(qor_array_set(STR_Y0.get(), slot, top));
  DO(qor_array_set(STR_Y1.get(), slot, bottom));
  DO(qor_array_set(STR_LIFE.get(), slot, streak_life));
  return {};
}

} // namespace kavo
