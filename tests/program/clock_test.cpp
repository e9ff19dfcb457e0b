// Time that jumps while the real program plays: a machine that slept, or was set to another day.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <string>

#include "game/playfield/pieces.h"
#include "game/program.h"
#include "game/state.h"
#include "tests/fakes/fake_clock.h"
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

} // namespace
} // namespace kavo::test
