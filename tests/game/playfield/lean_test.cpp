// The board's lean: its pull, the tip over by a quarter turn, the rest after it, its animation.
#include <algorithm>
#include <cmath>

#include "game/board/pull.h"
#include "game/playfield/lean.h"
#include "game/playfield/locking.h"
#include "game/presentation/turning_board.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

class LeanTest : public GameTest {
protected:
  static double pull() { return run(TORQUE()); }

  // `count` blocks at the edge of the board, from the floor up.
  static void stack(int64_t column, int64_t count) {
    for (int64_t row = ROWS - count; row < ROWS; ++row)
      put(row, column, 3);
  }

  static bool has_tipped() { return ROWS != 15; }

  // A lock of a piece that weighs nothing.
  static void apply() { run(APPLYKAVO()); }

  // Leaves a freshly tipped board with a pull beyond the threshold and this rest.
  static void rest_for(int64_t locks) {
    stack(9, 9);
    KAVOARMED = false;
    REARMIN = locks;
  }
};

// ---- the pull -----------------------------------------------------------------------------------

TEST_F(LeanTest, AnEmptyBoardPullsToNeitherSide) {
  EXPECT_EQ(pull(), 0.0);
}

TEST_F(LeanTest, ABlockInTheLastOfTenColumnsPullsWithFourAndAHalf) {
  put(14, 9);
  EXPECT_EQ(pull(), 4.5);
}

TEST_F(LeanTest, AHeavyBlockThereCountsTwice) {
  put(14, 9, 11);
  EXPECT_EQ(pull(), 9.0);
}

TEST_F(LeanTest, BlocksOnTheLeftPullToTheLeft) {
  put(14, 0);
  EXPECT_EQ(pull(), -4.5);
}

TEST_F(LeanTest, OnTheWideBoardTheArmIsMeasuredFromColumnSeven) {
  set_board_size(10, 15);
  put(3, 7);
  EXPECT_EQ(pull(), 0.0);
  put(3, 14);
  EXPECT_EQ(pull(), 7.0);
  put(3, 0, 11);
  EXPECT_EQ(pull(), -7.0);
}

TEST_F(LeanTest, TheRowOfABlockDoesNotMatter) {
  put(0, 8);
  put(14, 1);
  EXPECT_EQ(pull(), 0.0);
}

TEST_F(LeanTest, EveryKindButTheHeavyOneWeighsTheSame) {
  for (const int kind : {1, 4, 7, 8, 9, 10, 12}) {
    put(14, 9, kind);
    EXPECT_EQ(pull(), 4.5) << "kind " << kind;
  }
}

// ---- the threshold ------------------------------------------------------------------------------

TEST_F(LeanTest, APullOfExactlyFortyDoesNotTip) {
  stack(9, 8);
  put(14, 8);
  put(14, 5);
  ASSERT_EQ(pull(), 40.0);
  apply();
  EXPECT_FALSE(has_tipped());
  EXPECT_EQ(host().commands, 0);
  EXPECT_TRUE(KAVOARMED);
}

TEST_F(LeanTest, APullOfFortyAndAHalfTips) {
  stack(9, 9);
  ASSERT_EQ(pull(), 40.5);
  apply();
  EXPECT_TRUE(has_tipped());
}

TEST_F(LeanTest, ToTheLeftTheThresholdIsTheSame) {
  stack(0, 8);
  put(14, 1);
  put(14, 4);
  ASSERT_EQ(pull(), -40.0);
  apply();
  EXPECT_FALSE(has_tipped());
  put(13, 4);
  apply();
  EXPECT_TRUE(has_tipped());
}

TEST_F(LeanTest, AWideBoardTipsBackOntoItsNarrowSide) {
  set_board_size(10, 15);
  stack(14, 6);
  apply();
  EXPECT_EQ(ROWS, 15);
  EXPECT_EQ(COLS, 10);
  EXPECT_EQ(qor_array_len(BOARD.get()), 15);
  EXPECT_EQ(blocks_on_board(), 6);
}

// ---- the turn -----------------------------------------------------------------------------------

TEST_F(LeanTest, TippedClockwiseTheRightHandColumnBecomesTheFloor) {
  for (int64_t row = 1; row < 15; ++row) // one short, so that it is not cleared
    put(row, 9, static_cast<double>(row % 12 + 1));
  apply();
  ASSERT_EQ(ROWS, 10);
  ASSERT_EQ(COLS, 15);
  EXPECT_EQ(bottom_text(2), "...............\n321cba98765432.\n");
}

TEST_F(LeanTest, TippedAnticlockwiseTheLeftHandColumnBecomesTheFloor) {
  for (int64_t row = 1; row < 15; ++row)
    put(row, 0, static_cast<double>(row % 12 + 1));
  apply();
  ASSERT_EQ(ROWS, 10);
  EXPECT_EQ(bottom_text(2), "...............\n.23456789abc123\n");
}

TEST_F(LeanTest, AWideBoardTippedClockwiseHasItsRightHandColumnAsTheFloor) {
  set_board_size(10, 15);
  for (int64_t row = 1; row < 10; ++row)
    put(row, 14, static_cast<double>(row));
  apply();
  EXPECT_EQ(bottom_text(2), "..........\n987654321.\n");
}

TEST_F(LeanTest, AWideBoardTippedAnticlockwiseHasItsLeftHandColumnAsTheFloor) {
  set_board_size(10, 15);
  for (int64_t row = 1; row < 10; ++row)
    put(row, 0, static_cast<double>(row));
  apply();
  EXPECT_EQ(bottom_text(2), "..........\n.123456789\n");
}

TEST_F(LeanTest, BlocksFallToTheNewFloorInTheirNewColumns) {
  stack(9, 11);
  put(2, 1, 5);  // row 2 becomes column 12, with nothing below it
  put(14, 1, 6); // row 14 becomes column 0, where the edge's lowest block lies
  apply();
  EXPECT_EQ(bottom_text(2), "6..............\n"
                            "33333333333.5..\n");
}

TEST_F(LeanTest, TheFallingPieceIsNotTouched) {
  hold(shape(t_piece), 6, 4, 5);
  stack(9, 9);
  apply();
  EXPECT_EQ(PIECEX, 4);
  EXPECT_EQ(PIECEY, 5);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n###.\n....\n....\n");
}

TEST_F(LeanTest, AStarKeepsItsNumbersOnTheTurnedBoard) {
  put_star(0, 9, 3);
  stack(9, 9);
  apply();
  EXPECT_EQ(stars(), (std::vector<Star>{{9, 3}}));
}

// ---- what follows a tip -------------------------------------------------------------------------

TEST_F(LeanTest, ATipShakesAnnouncesAndDisarms) {
  stack(9, 9);
  apply();
  EXPECT_EQ(SHAKE, 16);
  EXPECT_EQ(FLASH, 18);
  EXPECT_FALSE(KAVOARMED);
}

TEST_F(LeanTest, TheRestAfterATipIsTwoToFiveLocks) {
  constexpr std::pair<double, int64_t> rests[] = {{0.0, 2}, {0.2499, 2}, {0.25, 3},
                                                  {0.5, 4}, {0.75, 5},   {0.9999, 5}};
  for (const auto& [draw, rest] : rests) {
    start_afresh();
    stack(9, 9);
    host().chance = {draw};
    apply();
    EXPECT_EQ(REARMIN, rest) << "draw " << draw;
  }
}

TEST_F(LeanTest, AfterARestOfTwoTheSecondLockArmsAndTheThirdTips) {
  rest_for(2);
  apply();
  EXPECT_EQ(REARMIN, 1);
  EXPECT_FALSE(KAVOARMED);
  apply();
  EXPECT_TRUE(KAVOARMED);
  EXPECT_FALSE(has_tipped()) << "not on the lock that arms it";
  EXPECT_EQ(host().commands, 0);
  apply();
  EXPECT_TRUE(has_tipped());
}

TEST_F(LeanTest, WhileItRestsABalancedBoardCountsDownToo) {
  KAVOARMED = false;
  REARMIN = 3;
  apply();
  EXPECT_EQ(REARMIN, 2);
}

TEST_F(LeanTest, RowsCompletedByTheFallAreClearedAtOnce) {
  stack(9, 15);
  put(7, 9, 0); // the gap in the new floor …
  put(7, 2, 5); // … into which this one falls
  LINESCLEARED = 9;
  apply();
  EXPECT_EQ(blocks_on_board(), 0);
  EXPECT_EQ(LINESCLEARED, 10);
  EXPECT_EQ(LEVEL, 2);
  EXPECT_EQ(CLEAREDTURN, 1);
  EXPECT_EQ(SCORE, 100);
}

TEST_F(LeanTest, RowsCompletedByTheFallCountForTheComboOfTheirLock) {
  stack(9, 15);
  COMBO = 1;
  NEXTPIECE = shape(t_piece);
  host().chance.assign(400, 0.9);
  hold(shape(single_cell), 10, 3, 13);
  run(LOCKSEQUENCE());
  EXPECT_EQ(CLEAREDTURN, 1);
  EXPECT_EQ(COMBO, 2);
}

TEST_F(LeanTest, ATipSoundsTurnsClearsAndThenDrawsTheRest) {
  stack(9, 15);
  apply();
  const Trace sent = drawn();
  EXPECT_EQ(sent.front(), R"(SOUND.PLAY 5 "c2")");
  EXPECT_EQ(sent.back(), "RND 1");
  const auto turn = std::ranges::find_if(
      sent, [](const std::string& line) { return line.starts_with("TRANSPOSE"); });
  EXPECT_EQ(only("SCREENFLIP", Trace(sent.begin(), turn)).size(), 8U) << "the animation, before";
  EXPECT_EQ(only("SCREENFLIP", Trace(turn, sent.end())).size(), 4U) << "the flash, after";
}

TEST_F(LeanTest, ClockwiseTheTransposedBoardIsUpsideDown) {
  stack(9, 9);
  apply();
  EXPECT_TRUE(only("TRANSPOSE", new_trace())
                  .front()
                  .starts_with("TRANSPOSE [[0,0,0,0,0,0,0,0,0,3],[0,0,0,0,0,0,0,0,0,3],"));
}

TEST_F(LeanTest, AnticlockwiseTheBoardIsTransposedAsItIs) {
  stack(0, 9);
  apply();
  EXPECT_TRUE(only("TRANSPOSE", new_trace())
                  .front()
                  .starts_with("TRANSPOSE [[0,0,0,0,0,0,0,0,0,0],[0,0,0,0,0,0,0,0,0,0],"));
}

// ---- the animation ------------------------------------------------------------------------------

// One block on one board, turned one way.
struct Turned {
  int64_t rows, columns, row, column;
  double direction;
};

// The rectangle of the block in this frame: its centre is turned about (330, 350) while the board
// swells to 118 %.
std::string turned_rect(const Turned& block, int frame) {
  const double angle = block.direction * 1.570795 * frame * 0.125;
  const double scale = 1 + 0.18 * std::sin(std::abs(angle));
  const double dx = scale * ((static_cast<double>(block.column) + 0.5) * 36 -
                             static_cast<double>(block.columns) * 18);
  const double dy =
      scale * ((static_cast<double>(block.row) + 0.5) * 36 - static_cast<double>(block.rows) * 18);
  const double x = 330 + std::trunc(std::cos(angle) * dx - std::sin(angle) * dy);
  const double y = 350 + std::trunc(std::sin(angle) * dx + std::cos(angle) * dy);
  const double half = std::trunc(scale * 36 / 2);
  const double edge = std::trunc(scale * 36) - 2;
  return command_line("RECT", {x - half, y - half, edge, edge, 1});
}

class LeanAnimationTest : public LeanTest, public ::testing::WithParamInterface<Turned> {};

TEST_P(LeanAnimationTest, EightFramesTurnTheBlockAboutTheMiddle) {
  const Turned& block = GetParam();
  set_board_size(block.rows, block.columns);
  put(block.row, block.column, 5);
  run(ANIMATEKAVO(block.direction));
  Trace expected;
  for (int frame = 1; frame <= 8; ++frame)
    expected = joined({expected,
                       {"CLS", "DRAWCOLOR 12 26 44", "RECT 0 0 660 800 1", "DRAWCOLOR 110 200 95",
                        turned_rect(block, frame), "SCREENFLIP"}});
  EXPECT_TRUE(same(drawn(), expected));
  EXPECT_EQ(clock().slept_ms, 8 * 16.0);
}

INSTANTIATE_TEST_SUITE_P(BothBoardsBothWays, LeanAnimationTest,
                         ::testing::Values(Turned{15, 10, 14, 9, 1}, Turned{15, 10, 14, 9, -1},
                                           Turned{15, 10, 0, 0, 1}, Turned{10, 15, 9, 14, 1},
                                           Turned{10, 15, 9, 14, -1}, Turned{10, 15, 4, 3, -1}));

TEST_F(LeanTest, TheAnimationEndsWithTheLowerRightCornerAtTheLowerLeft) {
  put(14, 9, 5);
  run(ANIMATEKAVO(1));
  EXPECT_EQ(only("RECT", drawn()).back(), "RECT 12 520 40 40 1");
}

TEST_F(LeanTest, ATipIsShownTurningTowardsTheHeavySide) {
  for (const int64_t column : {0, 9}) {
    start_afresh();
    stack(column, 9);
    apply();
    const Turned lowest{15, 10, 14, column, column == 9 ? 1.0 : -1.0};
    EXPECT_TRUE(contains(drawn(), turned_rect(lowest, 3))) << "column " << column;
  }
}

TEST_F(LeanTest, TheAnimationDrawsRowByRowInTheColoursOfTheKinds) {
  put(14, 0, 12);
  put(14, 9, 1);
  put(3, 5, 9);
  run(ANIMATEKAVO(1));
  const Trace colors = only("DRAWCOLOR", drawn());
  EXPECT_TRUE(same({colors.begin() + 1, colors.begin() + 4},
                   {"DRAWCOLOR 120 230 245", "DRAWCOLOR 245 200 250", "DRAWCOLOR 90 210 230"}));
}

// ---- failures -----------------------------------------------------------------------------------

TEST_F(LeanTest, WhicheverCommandFailsTheTipStopsThere) {
  for (const int64_t column : {0, 9}) {
    const auto commands =
        fail_each_command([column] { stack(column, 15); }, [] { run(APPLYKAVO()); });
    EXPECT_GT(commands, 8 * 34);
  }
}

TEST_F(LeanTest, WhenTheBoardCannotBeTurnedItStaysAsItIs) {
  for (const int64_t column : {0, 9}) {
    start_afresh();
    stack(column, 9);
    const std::string before = board_text();
    host().fail_name = "TRANSPOSE";
    apply();
    EXPECT_EQ(take_error(), "TRANSPOSE: failed on command");
    EXPECT_EQ(ROWS, 15);
    EXPECT_EQ(board_text(), before);
    EXPECT_TRUE(KAVOARMED);
  }
}

} // namespace
} // namespace kavo::test
