// A player who ends the program does not wait for its animations, whatever picture they are at.
#include <SDL.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <functional>
#include <string>

#include "game/commands.h"
#include "game/program.h"
#include "game/state.h"
#include "tests/desktop/desktop.h"
#include "tests/fakes/fake_clock.h"
#include "tests/support/temporary_folder.h"

namespace kavo::test {
namespace {

// Of the game's own pauses: two pictures' and the frame's. What comes on top, the fade of the
// sound and the window's end, takes at most a tenth of a second more.
constexpr double longest_wait_ms = 3 * 16;

constexpr int too_late = 98;

// A lock with both animations: a row filler completes the bottom row, which flashes; the rows above
// it, which lack their first cell, then pull the board over.
void arrange_lock() {
  BOARD = zero_matrix(15, 10);
  for (int64_t row = 4; row < 14; ++row)
    for (int64_t column = 1; column < 10; ++column)
      put_cell(BOARD.get(), row, column, 3);
  CURRENTPIECE = zero_matrix(4, 4);
  put_cell(CURRENTPIECE.get(), 1, 1, 1);
  PIECECOLOR = 12;
  PIECEX = 3;
  PIECEY = 13;
  LASTDROP = -1e6;
  enter_state("play");
}

// Runs the program up to its title and then with that lock as its next frame; `on_sleep` is called
// in each of the game's pauses from then on, with their number.
[[noreturn]] void play_lock(const std::function<void(int)>& on_sleep) {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  int sleeps = 0;
  fake_clock().on_sleep = [&] {
    if (sleeps == 0)
      arrange_lock();
    else
      on_sleep(sleeps);
    ++sleeps;
  };
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  std::_Exit(run_to_exit(1, arguments) == 0 ? 0 : 1);
}

// How many pauses the lock's frame makes: while it lasts the game reads no clock.
int pauses_of_the_lock() {
  const pid_t child = fork();
  if (child == 0)
    play_lock([frame = 0.0](int number) mutable {
      if (number == 1)
        frame = NOW;
      if (NOW != frame)
        _exit(number - 1);
    });
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 0;
}

double asked_at_ms = 0;

void tell_how_long_it_took() {
  if (fake_clock().slept_ms - asked_at_ms > longest_wait_ms)
    _exit(too_late);
}

[[noreturn]] void end_at_pause(int wanted, void (*wish_to_end)()) {
  std::atexit(tell_how_long_it_took);
  play_lock([wanted, wish_to_end](int number) {
    if (number != wanted)
      return;
    asked_at_ms = fake_clock().slept_ms;
    wish_to_end();
  });
}

void interrupt() {
  std::raise(SIGINT);
}

void terminate() {
  std::raise(SIGTERM);
}

// As the window's close button does.
void close_window() {
  SDL_Event event = {};
  event.type = SDL_QUIT;
  SDL_PushEvent(&event);
}

class BlockingAnimations : public ::testing::Test {
protected:
  void SetUp() override { setenv("SDL_VIDEODRIVER", "offscreen", 1); }

private:
  WorkingFolder folder_;
};

TEST_F(BlockingAnimations, AreTheFlashOfARowAndTheTip) {
  EXPECT_GE(pauses_of_the_lock(), 4 + 8 + 1); // one more is the frame's own
}

TEST_F(BlockingAnimations, DoNotHoldUpASignal) {
  const int pauses = pauses_of_the_lock();
  for (int number = 1; number <= pauses; ++number)
    EXPECT_EXIT(end_at_pause(number, number % 2 == 0 ? interrupt : terminate),
                ::testing::ExitedWithCode(0), "")
        << "pause " << number;
}

TEST_F(BlockingAnimations, DoNotHoldUpAClosedWindow) {
  const kavo::desktop::Desktop desktop;
  setenv("SDL_VIDEODRIVER", "x11", 1);
  setenv("DISPLAY", desktop.display_name().c_str(), 1);
  for (const int number : {2, 8, pauses_of_the_lock()})
    EXPECT_EXIT(end_at_pause(number, close_window), ::testing::ExitedWithCode(0), "")
        << "pause " << number;
}

// ---- an error and the wish to end in one frame --------------------------------------------------

void leave_an_error() {
  qorrt_call_typed_f64(qor_runtime_handle(), "NO.COMMAND", nullptr, nullptr, 0);
}

// Both come up when the frame reads the clock, behind the commands of the frame before.
[[noreturn]] void fail_and_end_in_one_frame(void (*fail)()) {
  setenv("SDL_AUDIODRIVER", "dummy", 1);
  static void (*failure)() = nullptr;
  failure = fail;
  const qor_clock clock = {.tick =
                               [](void*) {
                                 if (state_is("title")) {
                                   failure();
                                   terminate();
                                 }
                                 return 0.0;
                               },
                           .sleep = [](void*, uint32_t) {},
                           .context = nullptr};
  qor_set_clock(&clock);
  std::string name = "kavo";
  char* arguments[] = {name.data(), nullptr};
  std::_Exit(run_to_exit(1, arguments));
}

class AnErrorInTheLastFrame : public BlockingAnimations {};

TEST_F(AnErrorInTheLastFrame, IsToldWhenTheHostFails) {
  EXPECT_EXIT(fail_and_end_in_one_frame(leave_an_error), ::testing::ExitedWithCode(1),
              "^Unhandled exception: unknown command \"NO.COMMAND\"\n$");
}

TEST_F(AnErrorInTheLastFrame, IsToldWhenTheGameFails) {
  EXPECT_EXIT(fail_and_end_in_one_frame([] { qor_err_set("the game's own", 1); }),
              ::testing::ExitedWithCode(1), "^Unhandled exception: the game's own\n$");
}

TEST_F(AnErrorInTheLastFrame, IsNoneWhenNothingFails) {
  EXPECT_EXIT(fail_and_end_in_one_frame([] {}), ::testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace kavo::test
