#include "tests/film/flashes.h"

#include <deque>
#include <utility>

#include "game/state.h"
#include "tests/fakes/fake_clock.h"
#include "tests/film/flash_meter.h"
#include "tests/film/studio.h"

namespace kavo::film {

namespace {

constexpr int allowed_in_a_second = 3;

// Sees only the pictures of a board at rest. It looks at them late, for a board turns before it
// begins to shake, and an edge that has moved may move back a frame after.
class RestMeter {
public:
  void look_at(const host::Canvas& picture, double now_ms, bool is_shaking) {
    waiting_.emplace_back(now_ms, copy_of(picture));
    if (is_shaking) {
      waiting_.clear();
      rests_from_ms_ = now_ms + after_ms;
    }
    for (; !waiting_.empty() && waiting_.front().first <= now_ms - turn_ms; waiting_.pop_front())
      if (waiting_.front().first >= rests_from_ms_)
        meter_.look_at(waiting_.front().second, waiting_.front().first);
  }
  const FlashMeter& meter() const { return meter_; }

private:
  static constexpr double turn_ms = 200;
  static constexpr double after_ms = 60;

  std::deque<std::pair<double, host::Canvas>> waiting_;
  double rests_from_ms_ = 0;
  FlashMeter meter_;
};

Most most_of(const FlashMeter& meter) {
  return {.general = meter.most_general(), .red = meter.most_red()};
}

} // namespace

Flashes flashes_of_play(Player player, int seed, int64_t frames) {
  Flashes result;
  FlashMeter meter;
  RestMeter rest;
  bool are_too_many = false;
  int64_t shown = 0;
  studio().play = [&](host::EventSink& sink) { player.act(sink); };
  studio().watch = [&](const host::Canvas& picture) {
    const double now_ms = test::fake_clock().now_ms;
    meter.look_at(picture, now_ms);
    rest.look_at(picture, now_ms, SHAKE > 0);
    const bool were_too_many =
        std::exchange(are_too_many, meter.general_now() > allowed_in_a_second);
    result.too_many += are_too_many && !were_too_many ? 1 : 0;
    if (++shown == frames)
      player.leave();
  };
  result.has_ended_well = run_game({}, seed);
  studio() = {};
  result.seconds = test::fake_clock().now_ms / 1000;
  result.all = most_of(meter);
  result.at_rest = most_of(rest.meter());
  return result;
}

} // namespace kavo::film
