// A game that goes on while its window is taken from one display to another.
#include <gtest/gtest.h>

#include "tests/desktop/game/playing.h"

namespace {

using kavo::desktop::Place;
using kavo::playing::Game;

constexpr int width = 660;
constexpr int height = 800;
constexpr kavo::desktop::DisplaySize laptop = {1400, 900};
constexpr kavo::desktop::DisplaySize large = {2 * width, 2 * height};
constexpr int room = 32; // for the window's borders

class GameOnTwoDisplays : public testing::Test {
protected:
  GameOnTwoDisplays() : game({.displays = {laptop, large}}) {}

  bool comes_to(int x, int y) {
    game.window->move(x, y);
    return kavo::desktop::eventually([&] {
      const Place place = game.window->place();
      return place.x >= x && place.x < x + room && place.y >= y && place.y < y + room;
    });
  }

  // Whether the window covers the display and shows the well there.
  bool fills(const Place& display, int scale) {
    return kavo::desktop::eventually([&] {
      const auto shown = game.window->pixels_if_visible();
      return shown && game.window->place() == display &&
             shown->at(scale * 146, scale * 300) == kavo::playing::well_frame;
    });
  }

  bool moves_a_piece() { return game.move(-1) + game.move(1) == 2; }

  Game game;
};

TEST_F(GameOnTwoDisplays, IsPlayedOnTheSecond) {
  ASSERT_TRUE(comes_to(laptop.width + 100, 50));
  game.start_playing();
  EXPECT_TRUE(moves_a_piece());
}

TEST_F(GameOnTwoDisplays, GoesOnWhenTheSecondThatItFillsIsUnpluggedAndPluggedIn) {
  game.start_playing();
  game.tap("p");
  ASSERT_TRUE(game.is_paused());
  ASSERT_TRUE(comes_to(laptop.width + 100, 50));
  game.tap("F11");
  EXPECT_TRUE(fills({laptop.width, 0, large.width, large.height}, 2));
  game.desktop.unplug(1);
  game.tap("F11");
  ASSERT_TRUE(kavo::desktop::eventually([&] { return game.window->size().width == width; }));
  ASSERT_TRUE(comes_to(100, 50));
  ASSERT_TRUE(game.is_paused());
  game.tap("p");
  ASSERT_TRUE(game.is_playing());
  EXPECT_TRUE(moves_a_piece());
  const int column = game.leftmost_column();
  game.desktop.plug_in(1); // for which the server blanks the screen
  ASSERT_TRUE(kavo::desktop::eventually([&] { return game.leftmost_column() == column; }));
  EXPECT_TRUE(moves_a_piece());
  game.window->ask_to_close();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
}

} // namespace
