// Two buttons of a game controller press two keys each: south Space and Return, start P and Return.
// On no screen do the two get in each other's way.
#include <filesystem>

#include "game/playfield/new_game.h"
#include "game/program.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class ControllerKeysTest : public GameTest {
protected:
  static void frame(std::set<std::string> keys = {}) {
    host().keys = std::move(keys);
    run(run_frame());
  }
  static void press_south() { frame({"Space", "Return"}); }
  static void press_start() { frame({"P", "Return"}); }

  static void play() {
    host().chance = {0.5, 0.5, 0.5, 0.5};
    run(RESETGAME());
    enter_state("play");
  }
};

TEST_F(ControllerKeysTest, SouthStartsAGameAndDropsNothingWhileHeld) {
  press_south();
  EXPECT_TRUE(state_is("play"));
  press_south();
  EXPECT_TRUE(state_is("play"));
  EXPECT_EQ(blocks_on_board(), 0);
}

TEST_F(ControllerKeysTest, SouthDropsOnePiece) {
  play();
  press_south();
  EXPECT_TRUE(state_is("play"));
  EXPECT_EQ(blocks_on_board(), 4);
}

TEST_F(ControllerKeysTest, SouthEndsAPauseAndDropsNothing) {
  play();
  enter_state("pause");
  press_south();
  EXPECT_TRUE(state_is("play"));
  frame();
  EXPECT_EQ(blocks_on_board(), 0);
}

TEST_F(ControllerKeysTest, SouthSwitchesAnOptionOnce) {
  enter_state("options");
  press_south();
  press_south();
  EXPECT_EQ(MUSICON, 0);
  EXPECT_TRUE(state_is("options"));
}

TEST_F(ControllerKeysTest, SouthAcceptsANameAndStartsNothing) {
  const WorkingFolder scores;
  std::filesystem::create_directory("tmp");
  ENTERNAME = numbers({0, 0, 0});
  ENTERRANK = 0;
  enter_state("enter");
  press_south();
  EXPECT_TRUE(state_is("title"));
  press_south();
  EXPECT_TRUE(state_is("title")) << "still the same press";
}

TEST_F(ControllerKeysTest, TheDropThatEndsTheGameDoesNotAcceptTheName) {
  play();
  fill_row(0);
  put(0, 0, 0);
  fill_row(1);
  put(1, 0, 0);
  SCORE = 500;
  press_south();
  ASSERT_TRUE(state_is("enter"));
  press_south();
  EXPECT_TRUE(state_is("enter"));
}

TEST_F(ControllerKeysTest, StartPausesAndGoesOn) {
  play();
  press_start();
  EXPECT_TRUE(state_is("pause"));
  frame();
  press_start();
  EXPECT_TRUE(state_is("play"));
}

TEST_F(ControllerKeysTest, StartOnTheTitleDoesNothing) {
  press_start();
  EXPECT_TRUE(state_is("title"));
  EXPECT_EQ(blocks_on_board(), 0);
}

} // namespace
} // namespace kavo::test
