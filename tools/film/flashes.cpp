#include "tools/film/flashes.h"

#include <deque>
#include <utility>

#include "game/state.h"
#include "tests/fakes/fake_clock.h"
#include "tests/fakes/stage.h"
#include "tools/film/flash_meter.h"
#include "tools/film/studio.h"

namespace kavo::film {

namespace {

using kavo::test::stage;

constexpr int allowed_in_a_second = 3;

// Lets only the pictures of a board at rest through. It does so late, for a board turns before it
// begins to shake, and an edge that has moved may move back a frame after.
class Rest {
public:
  template<typename Show>
  void look_at(const host::Canvas& picture, double now_ms, bool is_shaking, Show show) {
    waiting_.emplace_back(now_ms, copy_of(picture));
    if (is_shaking) {
      waiting_.clear();
      rests_from_ms_ = now_ms + after_ms;
    }
    for (; !waiting_.empty() && waiting_.front().first <= now_ms - turn_ms; waiting_.pop_front())
      if (waiting_.front().first >= rests_from_ms_)
        show(waiting_.front().second, waiting_.front().first);
  }

private:
  static constexpr double turn_ms = 200;
  static constexpr double after_ms = 60;

  std::deque<std::pair<double, host::Canvas>> waiting_;
  double rests_from_ms_ = 0;
};

// Counts how often something begins.
class Occasions {
public:
  void look_at(bool is_so) {
    count_ += is_so && !was_so_ ? 1 : 0;
    was_so_ = is_so;
  }
  int count() const { return count_; }

private:
  bool was_so_ = false;
  int count_ = 0;
};

// Counts the tips of the board, and the shakes that come without one.
class Movements {
public:
  void look_at_board() {
    if (SHAKE > std::exchange(shake_, SHAKE))
      ++(FLASH > banner_of_powerups ? tips_ : shakes_);
  }
  int tips() const { return tips_; }
  int shakes() const { return shakes_; }

private:
  static constexpr int64_t banner_of_powerups = 14; // pictures; a tip's stays longer

  int64_t shake_ = 0;
  int tips_ = 0;
  int shakes_ = 0;
};

Most most_of(const FlashMeter::Counts& counts) {
  return {.overlapping = counts.overlapping.most(), .in_step = counts.in_step.most()};
}

MostOfEach most_of(const FlashMeter& meter) {
  return {.general = most_of(meter.general()), .red = most_of(meter.red())};
}

// Looks at the play in a window of one size.
class Spectator {
public:
  explicit Spectator(double scale) : meter_(scale), rest_(scale) {}

  void look_at(const host::Canvas& picture, double now_ms) {
    meter_.look_at(picture, now_ms);
    const auto& general = meter_.general();
    overlapping_.look_at(general.overlapping.now() > allowed_in_a_second);
    in_step_.look_at(general.in_step.now() > allowed_in_a_second);
  }
  void look_at_rest(const host::Canvas& picture, double now_ms) { rest_.look_at(picture, now_ms); }

  Flashing flashing() const {
    return {.all = most_of(meter_),
            .at_rest = most_of(rest_),
            .too_many = {.overlapping = overlapping_.count(), .in_step = in_step_.count()}};
  }

private:
  FlashMeter meter_;
  FlashMeter rest_;
  Occasions overlapping_; // that are too many
  Occasions in_step_;
};

} // namespace

FilmedPlay film_play(Player player, int seed, int64_t frames, const std::vector<double>& scales,
                     std::optional<int> calm_share) {
  std::vector<Spectator> spectators(scales.begin(), scales.end());
  Rest rest;
  Movements movements;
  int64_t shown = 0;
  stage().calm_share = calm_share;
  stage().play = [&](host::EventSink& sink) { player.act(sink); };
  stage().watch = [&](const host::Canvas& picture) {
    const double now_ms = kavo::test::fake_clock().now_ms;
    for (auto& spectator : spectators)
      spectator.look_at(picture, now_ms);
    movements.look_at_board();
    if (++shown == frames)
      player.leave();
    if (calm_share)
      return;
    rest.look_at(picture, now_ms, SHAKE > 0, [&](const host::Canvas& still, double time_ms) {
      for (auto& spectator : spectators)
        spectator.look_at_rest(still, time_ms);
    });
  };
  FilmedPlay result;
  result.has_ended_well = run_game({}, seed);
  stage() = {};
  result.seconds = kavo::test::fake_clock().now_ms / 1000;
  result.tips = movements.tips();
  result.shakes = movements.shakes();
  for (const auto& spectator : spectators)
    result.scales.push_back(spectator.flashing());
  return result;
}

} // namespace kavo::film
