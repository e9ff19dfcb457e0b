// Screens on which only the sky moves: nothing else of them is sent to the X server.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/desktop/game/playing.h"

namespace {

using kavo::desktop::Bitmap;
using kavo::playing::Game;

constexpr uint32_t paint = 0x00FF00FF; // of another program's, over the window

int painted(const Bitmap& picture, int first_row, int end_row) {
  int count = 0;
  for (int y = first_row; y < end_row; ++y)
    for (int x = 0; x < picture.width; ++x)
      count += picture.at(x, y) == paint ? 1 : 0;
  return count;
}

// The stars are somewhere in the upper part, and each of them twinkles.
bool twinkles(const Bitmap& picture) {
  constexpr int stars = 40;
  const int all = picture.width * 240;
  return all - painted(picture, 0, 240) > stars * 4;
}

void expect_only_the_sky_sent(Game& game) {
  constexpr int first_row = 440; // below clouds, sun, stars and letters that blink
  constexpr int end_row = 740;   // above the line that tells of help at first
  game.window->deface(paint);
  ASSERT_TRUE(game.shows(twinkles));
  ASSERT_TRUE(game.shows(twinkles));
  EXPECT_EQ(painted(game.picture(), first_row, end_row),
            game.picture().width * (end_row - first_row));
}

TEST(StillScreens, SendTheirSkyOnly) {
  Game game("1");
  ASSERT_TRUE(game.is_on_title());
  expect_only_the_sky_sent(game);
  game.tap("o");
  ASSERT_TRUE(game.is_in_options());
  expect_only_the_sky_sent(game);
}

} // namespace
