// A game whose window somebody else takes off the screen and puts back while it plays.
#include <gtest/gtest.h>

#include "tests/desktop/game/playing.h"

namespace {

using kavo::playing::Game;

// Window managers give and take the window's frame in answer to that, while SDL asks about it: some
// of its questions are about what is gone.
TEST(AWindowThatComesAndGoes, IsPlayedOnUnderAWindowManager) {
  Game game(kavo::playing::Conditions{.has_window_manager = true});
  game.start_playing();
  for (int round = 0; round < 5000; ++round) {
    game.window->unmap();
    game.window->map();
  }
  game.desktop.wait_for_window_manager();
  ASSERT_TRUE(kavo::desktop::eventually([&] {
    return game.window->pixels_if_visible().has_value();
  })) << game.process->errors_so_far();
  game.window->take_focus_away(); // it may wait for its player already
  ASSERT_TRUE(game.is_waiting());
  game.window->focus();
  ASSERT_TRUE(kavo::desktop::eventually([&] { return game.window->is_focused(); }));
  game.tap("space");
  ASSERT_TRUE(game.is_playing());
  game.start_again();
  EXPECT_EQ(game.move(-1) + game.move(1), 2);
  game.window->ask_to_close();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_TRUE(outcome.errors.empty() || outcome.errors.starts_with("the X server refused"))
      << outcome.errors;
}

} // namespace
