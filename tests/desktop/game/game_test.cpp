// A person plays: the real program in a real window, driven by real key events.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "tests/desktop/game/playing.h"

namespace {

using kavo::playing::cell_in;
using kavo::playing::empty_cell;
using kavo::playing::Game;

// With this chance the first pieces are two flat bars and a square, which fill a row side by side.
constexpr const char* bar_bar_square = "46";
constexpr uint32_t bar_colour = 0x5AD2E6;
constexpr uint32_t square_colour = 0xEBCD46;

bool bottom_row_holds(const kavo::desktop::Bitmap& picture, int first, int last, uint32_t colour) {
  for (int column = first; column <= last; ++column)
    if (cell_in(picture, 14, column) != colour)
      return false;
  return true;
}

void drop_at(Game& game, int moves) {
  EXPECT_EQ(game.move(moves), std::abs(moves));
  game.tap("space");
}

TEST(PlayedGame, ShowsItsTitleInAWindowOfItsName) {
  Game game;
  EXPECT_EQ(game.window->title(), kavo::playing::title);
  EXPECT_EQ(game.window->size().width, 660);
  EXPECT_EQ(game.window->size().height, 800);
  EXPECT_TRUE(game.is_on_title());
  EXPECT_EQ(game.picture().at(3, 790), kavo::playing::night);
}

TEST(PlayedGame, ClearsARow) {
  Game game(bar_bar_square);
  game.start_playing();
  drop_at(game, -3);
  EXPECT_TRUE(game.shows([](const auto& p) { return bottom_row_holds(p, 0, 3, bar_colour); }));
  drop_at(game, 1);
  EXPECT_TRUE(game.shows([](const auto& p) { return bottom_row_holds(p, 4, 7, bar_colour); }));
  drop_at(game, 4);
  // The bars are gone and the upper half of the square has sunk to the floor.
  EXPECT_TRUE(game.shows([](const auto& p) {
    return bottom_row_holds(p, 0, 7, empty_cell) && bottom_row_holds(p, 8, 9, square_colour);
  }));
}

TEST(PlayedGame, EveryQuickTapMovesThePiece) {
  Game game;
  game.start_playing();
  int moved = 0;
  for (int pair = 0; pair < 100; ++pair) {
    if (!game.is_piece_high())
      game.start_again();
    moved += game.move(-1) + game.move(1);
  }
  EXPECT_EQ(moved, 200);
}

TEST(PlayedGame, PausesAndGoesOn) {
  Game game;
  game.start_playing();
  game.tap("p");
  EXPECT_TRUE(game.is_paused());
  game.tap("p");
  EXPECT_TRUE(game.is_playing());
}

TEST(PlayedGame, IsLostNamedAndKeptOnDisk) {
  Game game;
  game.lose();
  game.tap("Up");
  game.tap("Return");
  EXPECT_TRUE(game.is_on_title());
  const std::string scores = kavo::test::read_file(game.folder / "tmp/kavo_high.txt");
  EXPECT_EQ(scores.substr(0, 4), "BAA;") << scores;
}

TEST(PlayedGame, EndsInOrderWhenItsWindowIsClosed) {
  Game game;
  game.start_playing();
  game.window->ask_to_close();
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.errors, "");
}

TEST(PlayedGame, EndsWithItsLineOnEscapeFromTheTitle) {
  Game game;
  ASSERT_TRUE(game.is_on_title());
  game.tap("Escape");
  const auto outcome = game.process->wait();
  EXPECT_TRUE(outcome.has_exited);
  EXPECT_EQ(outcome.code, 0);
  EXPECT_EQ(outcome.output, "done\n");
}

// The scenes need no display; one that is there is used.
TEST(Scene, IsDrawnOnADisplayToo) {
  struct Scene {
    const char* word;
    const char* line;
    const char* picture;
  };
  const kavo::desktop::Desktop desktop;
  for (const auto& [word, line, picture] :
       {Scene{"kavo", "kavo shots saved\n", "tmp/kavo_after.png"},
        Scene{"pop", "pop shot saved\n", "tmp/kavo_pop.png"},
        Scene{"pu", "pu shots saved\n", "tmp/pu_after.png"},
        Scene{"storm", "storm shot saved\n", "tmp/kavo_storm.png"},
        Scene{"qbomb", "qbomb done\n", "tmp/q_after.png"},
        Scene{"title", "title shot\n", "tmp/kavo_title.png"},
        Scene{"opts", "opts shot\n", "tmp/kavo_opts.png"},
        Scene{"enter", "enter shot\n", "tmp/kavo_enter.png"},
        Scene{"", "shot saved\n", "tmp/kavo.png"}}) {
    const kavo::test::TemporaryFolder folder;
    const auto outcome =
        desktop.start(kavo::playing::launch(folder.path(), "1", {"shot", word}))->wait();
    EXPECT_TRUE(outcome.has_exited) << word;
    EXPECT_EQ(outcome.code, 0) << word << outcome.errors;
    EXPECT_EQ(outcome.output, line);
    EXPECT_GT(kavo::test::read_file(folder / picture).size(), 1000) << word;
  }
}

} // namespace
