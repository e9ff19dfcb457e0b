// Full rows: their flash, their removal, their score; and column gravity.
#include <bit>

#include "game/clearing/lines.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

class LinesTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    BX = 150;
    BY = 80;
  }

  static double has_hole(const Array& row) { return __lambda_0(qor_slot_of(row.get()).f64); }

  // What one frame of the flash draws over one row.
  static Trace bar(double y, double width, double height) {
    return {"DRAWCOLOR 255 255 255", command_line("RECT", {BX, y, width, height, 1})};
  }

  static constexpr std::array<double, 3> pale_yellow = {250, 250, 200};
};

// ---- what goes and what stays -------------------------------------------------------------------

TEST_F(LinesTest, WithoutAFullRowNothingHappens) {
  set_bottom({"123456789."});
  CLEARED = 7;
  run(CLEARLINES());
  EXPECT_EQ(CLEARED, 0);
  EXPECT_EQ(host().commands, 0);
  EXPECT_EQ(bottom_text(1), "123456789.\n");
  EXPECT_EQ(SCORE, 0);
}

TEST_F(LinesTest, NonAdjacentFullRowsBothGoAndTheOthersSink) {
  set_bottom({"2.........",   // row 9
              "1111111111",   // row 10
              "3.........",   // row 11
              "1111111111",   // row 12
              "4.........",   // row 13
              "5........."}); // row 14
  run(CLEARLINES());
  EXPECT_EQ(CLEARED, 2);
  EXPECT_EQ(bottom_text(6), "..........\n"
                            "..........\n"
                            "2.........\n"
                            "3.........\n"
                            "4.........\n"
                            "5.........\n");
}

TEST_F(LinesTest, TheBoardKeepsItsRowsAndEachStandsForItself) {
  fill_row(13);
  fill_row(14);
  run(CLEARLINES());
  ASSERT_EQ(qor_array_len(BOARD.get()), 15);
  put(0, 3, 5);
  EXPECT_EQ(at(0, 3), 5.0);
  EXPECT_EQ(at(1, 3), 0.0) << "two inserted rows must not be one";
}

TEST_F(LinesTest, ABoardOfFullRowsBecomesEmpty) {
  for (int64_t row = 0; row < ROWS; ++row)
    fill_row(row);
  run(CLEARLINES());
  EXPECT_EQ(CLEARED, 15);
  EXPECT_EQ(GAIN, 22500);
  EXPECT_EQ(blocks_on_board(), 0);
  EXPECT_EQ(qor_array_len(BOARD.get()), 15);
}

TEST_F(LinesTest, OnTheWideBoardARowHasFifteenCells) {
  set_board_size(10, 15);
  set_bottom({"1111111111....1", "111111111111111"});
  run(CLEARLINES());
  EXPECT_EQ(CLEARED, 1);
  EXPECT_EQ(bottom_text(2), "...............\n1111111111....1\n");
}

TEST_F(LinesTest, EveryKindOfBlockFillsARow) {
  set_bottom({"89abc12345"});
  run(CLEARLINES());
  EXPECT_EQ(CLEARED, 1);
}

TEST_F(LinesTest, ARowHasAHoleWhenItsSmallestValueIsZero) {
  EXPECT_EQ(has_hole(numbers({1, 0, 3})), 1.0);
  EXPECT_EQ(has_hole(numbers({1, 2, 12})), 0.0);
}

// ---- what it is worth ---------------------------------------------------------------------------

TEST_F(LinesTest, RowsPayByTheSquareOfTheirNumber) {
  constexpr int64_t gains[] = {100, 400, 900, 1600};
  for (int64_t rows = 1; rows <= 4; ++rows) {
    for (int64_t row = ROWS - rows; row < ROWS; ++row)
      fill_row(row);
    SCORE = 7;
    run(CLEARLINES());
    EXPECT_EQ(GAIN, gains[rows - 1]);
    EXPECT_EQ(SCORE, 7 + gains[rows - 1]);
  }
}

TEST_F(LinesTest, FourRowsAtOnceGainSixteenHundredAndPopThemUp) {
  for (int64_t row = 11; row < 15; ++row)
    fill_row(row);
  run(CLEARLINES());
  EXPECT_EQ(GAIN, 1600);
  EXPECT_EQ(popups(), (std::vector<Popup>{{150 + 180 - 16, 80 + 270, 1600}}));
}

TEST_F(LinesTest, OnTheWideBoardTheGainPopsUpInItsMiddleToo) {
  set_board_size(10, 15);
  fill_row(9);
  run(CLEARLINES());
  EXPECT_EQ(popups(), (std::vector<Popup>{{150 + 270 - 16, 80 + 180, 100}}));
}

TEST_F(LinesTest, TheTenthRowRaisesTheLevelToTwo) {
  LINESCLEARED = 9;
  fill_row(14);
  run(CLEARLINES());
  EXPECT_EQ(LINESCLEARED, 10);
  EXPECT_EQ(LEVEL, 2);
}

TEST_F(LinesTest, TheLevelFollowsTheNumberOfRows) {
  LINESCLEARED = 97;
  fill_row(14);
  run(CLEARLINES());
  EXPECT_EQ(LEVEL, 10);
  for (int64_t row = 11; row < 15; ++row)
    fill_row(row);
  run(CLEARLINES());
  EXPECT_EQ(LEVEL, 11);
}

TEST_F(LinesTest, RowsOfOneLockAddUp) {
  CLEAREDTURN = 2;
  fill_row(14);
  run(CLEARLINES());
  EXPECT_EQ(CLEAREDTURN, 3);
  EXPECT_EQ(CLEARED, 1);
}

// ---- what is seen and heard ---------------------------------------------------------------------

TEST_F(LinesTest, ARowFlashesForFourFramesAndThenSparksAndSounds) {
  host().chance.assign(45, 0.5);
  set_bottom({"2.........", "1111111111"});
  run(CLEARLINES());
  const Trace expected = joined({
      bar(584, 360, 36),
      {"SCREENFLIP"},
      bar(601, 360, 2),
      {"SCREENFLIP"},
      bar(618, 360, -32),
      {"SCREENFLIP"},
      bar(635, 360, -66),
      {"SCREENFLIP"},
      Trace(45, "RND 1"), // five bursts of three particles
      {"RESHAPE [0] [10]"},
  });
  const Trace sent = drawn();
  ASSERT_EQ(sent.size(), expected.size() + 2);
  EXPECT_TRUE(same({sent.begin(), sent.end() - 2}, expected));
  EXPECT_TRUE(sent[sent.size() - 2].starts_with("MVINS [[0,0,0,0,0,0,0,0,0,0],"));
  EXPECT_TRUE(sent[sent.size() - 2].ends_with("[2,0,0,0,0,0,0,0,0,0]] 0 0 [0,0,0,0,0,0,0,0,0,0]"));
  EXPECT_EQ(sent.back(), R"(SOUND.PLAY 4 "g4")");
}

TEST_F(LinesTest, EveryFrameOfTheFlashDrawsAllFullRowsFromTheTop) {
  fill_row(10);
  fill_row(12);
  run(CLEARLINES());
  const Trace sent = drawn();
  EXPECT_TRUE(same({sent.begin(), sent.begin() + 10}, joined({bar(440, 360, 36),
                                                              bar(512, 360, 36),
                                                              {"SCREENFLIP"},
                                                              bar(457, 360, 2),
                                                              bar(529, 360, 2),
                                                              {"SCREENFLIP"}})));
  EXPECT_EQ(only("SCREENFLIP", sent).size(), 4U);
  EXPECT_EQ(only("MVINS", sent).size(), 2U);
}

TEST_F(LinesTest, OnTheWideBoardTheBarIsAsWideAsTheBoard) {
  set_board_size(10, 15);
  fill_row(9);
  run(CLEARLINES());
  const Trace sent = drawn();
  EXPECT_EQ(sent[1], "RECT 150 404 540 36 1");
  EXPECT_EQ(only("RND", sent).size(), 72U); // eight bursts of three particles
  EXPECT_TRUE(contains(sent, "RESHAPE [0] [15]"));
}

TEST_F(LinesTest, TheFlashHoldsTheGameUpForFourPauses) {
  fill_row(14);
  run(CLEARLINES());
  EXPECT_EQ(clock().slept_ms, 64.0);
}

TEST_F(LinesTest, SparksFlyFromTheMiddleOfEverySecondCell) {
  fill_row(14);
  run(CLEARLINES());
  const auto sparks = particles_of(pale_yellow);
  ASSERT_EQ(sparks.size(), 15U);
  for (int64_t burst = 0; burst < 5; ++burst) {
    EXPECT_EQ(sparks[3 * burst].x, static_cast<double>(150 + 72 * burst + 18));
    EXPECT_EQ(sparks[3 * burst].y, 80 + 14 * 36 + 18);
  }
}

TEST_F(LinesTest, SparksHaveASpeedOfFive) {
  host().chance = {0.0, 0.6, 0.0}; // straight to the right at (0.6 + 0.4) times the speed
  fill_row(14);
  run(CLEARLINES());
  EXPECT_DOUBLE_EQ(particles().front().vx, 5.0);
}

// ---- failures -----------------------------------------------------------------------------------

TEST_F(LinesTest, WhicheverCommandFailsTheClearingStopsThere) {
  const auto commands = fail_each_command(
      [] {
        set_board_size(15, 10);
        fill_row(12);
        fill_row(14);
      },
      [] { run(CLEARLINES()); });
  EXPECT_EQ(commands, 4 * (2 * 2 + 1) + 90 + 1 + 2 + 1);
}

TEST_F(LinesTest, WhenARowCannotBeInsertedTheBoardStaysAndNothingIsScored) {
  fill_row(13);
  fill_row(14);
  host().fail_name = "MVINS";
  run(CLEARLINES());
  EXPECT_EQ(take_error(), "MVINS: failed on command");
  EXPECT_EQ(blocks_on_board(), 20);
  EXPECT_EQ(SCORE, 0);
  EXPECT_EQ(LINESCLEARED, 0);
}

// ---- column gravity -----------------------------------------------------------------------------

TEST_F(LinesTest, AnEmptyBoardSettlesToAnEmptyBoard) {
  run(SETTLEDOWN());
  EXPECT_EQ(blocks_on_board(), 0);
}

TEST_F(LinesTest, BlocksInRowsThreeAndSevenSettleInTheirOrderAtTheBottom) {
  put(3, 5, 8);
  put(7, 5, 2);
  run(SETTLEDOWN());
  EXPECT_EQ(bottom_text(2), ".....8....\n.....2....\n");
  EXPECT_EQ(blocks_on_board(), 2);
}

TEST_F(LinesTest, EachColumnSettlesByItself) {
  set_bottom({"1....c....", "2.a......3", ".........."});
  run(SETTLEDOWN());
  EXPECT_EQ(bottom_text(3), "..........\n1.........\n2.a..c...3\n");
}

TEST_F(LinesTest, SettlingClearsNothing) {
  fill_row(13);
  run(SETTLEDOWN());
  EXPECT_EQ(bottom_text(2), "..........\n1111111111\n");
  EXPECT_EQ(host().commands, 0);
}

TEST_F(LinesTest, OnTheWideBoardBlocksSettleToItsFloor) {
  set_board_size(10, 15);
  put(0, 14, 7);
  run(SETTLEDOWN());
  EXPECT_EQ(at(9, 14), 7.0);
}

// ---- the filter's own convention ----------------------------------------------------------------

TEST_F(LinesTest, TheFilterEntersTheGuardLikeEveryRoutine) {
  const Array row = numbers({0, 1});
  qor_recursion_reset_to(255);
  EXPECT_EQ(has_hole(row), 1.0);
  EXPECT_EQ(qor_recursion_depth(), 255);
  qor_recursion_reset_to(256);
  EXPECT_EQ(has_hole(row), 0.0);
  EXPECT_EQ(qor_recursion_depth(), 255) << "a refused entry lowers the depth, too";
  EXPECT_EQ(take_error(), "Stack overflow: recursion too deep");
  qor_recursion_reset_to(0);
}

} // namespace
} // namespace kavo::test
