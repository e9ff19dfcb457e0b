// Time that jumps while the real program plays: a machine that slept, or was set to another day.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <string>

#include "game/playfield/pieces.h"
#include "game/program.h"
#include "game/state.h"
#include "runtime/clock.h"
#include "runtime/dates.h"
#include "tests/fakes/fake_clock.h"
#include "tests/program/wall_clock.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

constexpr double three_days_ms = 3 * 24 * 3600 * 1000.0;
constexpr int first_frame = 2;
constexpr int jump_frame = 10;
constexpr int last_frame = 20;
constexpr int as_expected = 7;

// Starts a game in its second frame, lets three days pass in one of the next, and ends with
// `as_expected` when the piece has fallen by one row for that and play goes on.
[[noreturn]] void play_over_the_jump() {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  int frame = 0;
  int64_t row_before = 0;
  fake_clock().on_sleep = [&] {
    ++frame;
    if (frame == first_frame)
      enter_state("play");
    if (frame == jump_frame) {
      row_before = PIECEY;
      fake_clock().now_ms += three_days_ms;
    }
    if (frame == jump_frame + 1 && PIECEY != row_before + 1)
      std::_Exit(1);
    if (frame == last_frame)
      std::_Exit(PIECEY <= row_before + 2 && GAMEOVER == 0 ? as_expected : 2);
  };
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  run_to_exit(1, arguments);
  std::_Exit(3);
}

TEST(AClockThatJumpsByDays, LetsThePieceFallByOneRow) {
  setenv("SDL_VIDEODRIVER", "offscreen", 1);
  const WorkingFolder folder;
  EXPECT_EXIT(play_over_the_jump(), ::testing::ExitedWithCode(as_expected), "");
}

// ---- the wall clock
// -------------------------------------------------------------------------------

constexpr double day_s = 24 * 3600.0;
constexpr double month_s = 30 * day_s;

int frames_on_real_clock = 0;
double tick_before_ms = 0;
double epoch_before_s = 0;

// Whether dates are told that much later, give or take what the test itself has taken.
bool is_date_ahead_by(double seconds) {
  return std::abs(qor_now_epoch() - epoch_before_s - seconds) < day_s;
}

// The game's pause, on the system's own clock: the wall clock is set a month ahead in one frame and
// to a month ago in the next, and what the game is played by knows nothing of it.
void sleep_and_set_the_clock(void*, uint32_t milliseconds) {
  ++frames_on_real_clock;
  if (frames_on_real_clock == first_frame)
    enter_state("play");
  if (frames_on_real_clock == jump_frame) {
    tick_before_ms = qor_tick();
    epoch_before_s = qor_now_epoch();
    set_wall_clock_ahead(month_s);
    if (!is_date_ahead_by(month_s))
      std::_Exit(1);
  }
  if (frames_on_real_clock == jump_frame + 1) {
    set_wall_clock_ahead(-month_s);
    if (!is_date_ahead_by(-month_s))
      std::_Exit(2);
  }
  const double passed_ms = qor_tick() - tick_before_ms;
  if (passed_ms < 0 || passed_ms > 1000 * day_s)
    std::_Exit(3);
  if (frames_on_real_clock == last_frame)
    std::_Exit(GAMEOVER == 0 && state_is("play") ? as_expected : 4);
  const timespec duration{.tv_sec = 0, .tv_nsec = static_cast<long>(milliseconds) * 1'000'000};
  nanosleep(&duration, nullptr);
}

[[noreturn]] void play_while_the_clock_is_set() {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  const qor_clock clock = {.tick = nullptr, .sleep = sleep_and_set_the_clock, .context = nullptr};
  qor_set_clock(&clock);
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  run_to_exit(1, arguments);
  std::_Exit(5);
}

TEST(AWallClockThatIsSet, ChangesDatesAndNothingThatIsPlayed) {
  setenv("SDL_VIDEODRIVER", "offscreen", 1);
  const WorkingFolder folder;
  EXPECT_EXIT(play_while_the_clock_is_set(), ::testing::ExitedWithCode(as_expected), "");
}

} // namespace
} // namespace kavo::test
