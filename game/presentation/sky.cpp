#include "game/presentation/sky.h"

#include "game/commands.h"
#include "game/state.h"

namespace kavo {

namespace {

constexpr int64_t sun_radius = 26;

Out<> draw_sun() {
  DO(command::draw_color(232, 230, 200));
  const double centre = static_cast<double>(SCRW) - 92;
  for (int64_t i = -sun_radius; i <= sun_radius; ++i) {
    const auto half = static_cast<double>(
        qor_cint(qor_sqr(static_cast<double>(sun_radius * sun_radius - i * i))));
    const double y = 66.0 + static_cast<double>(i);
    DO(command::line(centre - half, y, centre + half, y));
  }
  return {};
}

// Left edge of a cloud that moves one pixel in `interval_ms`, wraps after `period` pixels and
// starts at `start`.
double cloud_left(double interval_ms, int64_t period, int64_t start) {
  return static_cast<double>(remainder_of(qor_int(qor_tick() / interval_ms), period) + start);
}

// The index shifts the phase, so that stars twinkle out of step.
Out<> draw_background_star(int64_t star) {
  const double wave = qor_sin(qor_tick() / 280 + static_cast<double>(star));
  const int64_t bright = qor_cint((wave + 1) * 0.5 * 140 + 90);
  DO(command::draw_color(bright, bright, qor_cint(0.8 * static_cast<double>(bright))));
  DO(command::rect(qor_array_get(BGSTAR_X.get(), star), qor_array_get(BGSTAR_Y.get(), star), 2, 2,
                   1));
  return {};
}

} // namespace

Out<> DRAWSKY() {
  ENTER();
  DO(draw_sun());
  DO(DRAWCLOUD(cloud_left(60, SCRW + 200, -180), 48));
  DO(DRAWCLOUD(cloud_left(90, SCRW + 240, -220), 104));
  for (int64_t star = 0; star < NBG; ++star)
    DO(draw_background_star(star));
  return {};
}

Out<> draw_night() {
  DO(command::cls());
  DO(command::draw_color(12, 26, 44));
  DO(command::rect(0, 0, SCRW, SCRH, 1));
  return {};
}

Out<> draw_menu_background() {
  DO(draw_night());
  DO(DRAWSKY());
  return {};
}

Out<> DRAWCLOUD(double x, double y) {
  ENTER();
  DO(command::draw_color(38, 48, 70));
  DO(command::rect(x, y, 64, 16, 1));
  DO(command::rect(x + 22, y - 10, 52, 18, 1));
  DO(command::rect(x + 48, y + 2, 52, 14, 1));
  return {};
}

} // namespace kavo
