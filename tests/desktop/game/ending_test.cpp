// However the player ends the real program and wherever it is: it ends in order and at once.
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

namespace fs = std::filesystem;
using kavo::playing::Game;

struct Way {
  const char* name;
  void (*go)(Game&);
};

constexpr Way ways[] = {
    {"closed", [](Game& game) { game.window->ask_to_close(); }},
    {"interrupted", [](Game& game) { game.process->send_signal(SIGINT); }},
    {"terminated", [](Game& game) { game.process->send_signal(SIGTERM); }},
};

// Nothing may be half-written: no scores were made, so that no file may be there at all.
void expect_order(const Game& game, const kavo::desktop::Outcome& outcome) {
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
  EXPECT_TRUE(fs::is_empty(game.folder / "tmp"));
}

// Ends a game in each of the ways once `reach` has brought it where it is to end. Prints how long
// that took, for scripts/soak to show; on a busy machine it is no measure.
void end_each_way(const char* where, void (*reach)(Game&)) {
  for (const auto& [name, go] : ways) {
    SCOPED_TRACE(name);
    Game game;
    reach(game);
    if (testing::Test::HasFatalFailure())
      return;
    const auto start = std::chrono::steady_clock::now();
    go(game);
    const auto outcome = game.process->wait();
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    std::printf("%s in %s: ended after %.0f ms\n", name, where, taken.count());
    expect_order(game, outcome);
  }
}

TEST(Ending, InTheTitle) {
  end_each_way("the title", [](Game& game) { ASSERT_TRUE(game.is_on_title()); });
}

TEST(Ending, OnceHoweverOftenItIsAskedFor) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  for (const int signal : {SIGTERM, SIGTERM, SIGINT, SIGTERM})
    game.process->send_signal(signal);
  expect_order(game, game.process->wait());
}

TEST(Ending, InTheOptions) {
  end_each_way("the options", [](Game& game) {
    ASSERT_TRUE(game.is_on_title());
    game.tap("o");
    ASSERT_TRUE(game.is_in_options());
  });
}

TEST(Ending, InAGame) {
  end_each_way("a game", [](Game& game) { game.start_playing(); });
}

TEST(Ending, InAPause) {
  end_each_way("a pause", [](Game& game) {
    game.start_playing();
    game.tap("p");
    ASSERT_TRUE(game.is_paused());
  });
}

TEST(Ending, InTheNameEntry) {
  end_each_way("the name entry", [](Game& game) { game.lose(); });
}

} // namespace
