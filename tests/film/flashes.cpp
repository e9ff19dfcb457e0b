#include "tests/film/flashes.h"

#include <algorithm>

#include "game/state.h"
#include "tests/fakes/fake_clock.h"
#include "tests/film/flash_meter.h"
#include "tests/film/studio.h"

namespace kavo::film {

namespace {

// The board turns before it shakes, and an edge that has moved may move back a frame later.
constexpr double turn_ms = 200;
constexpr double after_ms = 60;

std::vector<double> without(const std::vector<double>& shaking_ms, std::vector<double> times_ms) {
  std::erase_if(times_ms, [&](double time_ms) {
    const auto next = std::lower_bound(shaking_ms.begin(), shaking_ms.end(), time_ms - after_ms);
    return next != shaking_ms.end() && *next <= time_ms + turn_ms;
  });
  return times_ms;
}

} // namespace

Flashes flashes_of_play(Player player, int seed, int64_t frames) {
  FlashMeter meter;
  std::vector<double> shaking_ms;
  int64_t shown = 0;
  studio().play = [&](host::EventSink& sink) { player.act(sink); };
  studio().watch = [&](const host::Canvas& picture) {
    const double now_ms = test::fake_clock().now_ms;
    meter.look_at(picture, now_ms);
    if (SHAKE > 0)
      shaking_ms.push_back(now_ms);
    if (++shown == frames)
      player.leave();
  };
  Flashes result;
  result.has_ended_well = run_game({}, seed);
  studio() = {};
  result.seconds = test::fake_clock().now_ms / 1000;
  result.general_ms = meter.general_ms();
  result.red_ms = meter.red_ms();
  result.general_ms_at_rest = without(shaking_ms, meter.general_ms());
  result.red_ms_at_rest = without(shaking_ms, meter.red_ms());
  return result;
}

} // namespace kavo::film
