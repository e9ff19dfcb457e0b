// Collision, rotation with its kicks, the ghost row and the hard drop.
#include "game/board/collision.h"
#include "game/playfield/movement.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

class MovementTest : public GameTest {
protected:
  static bool collides(const Array& piece, double x, double y) {
    return run(CHECKCOLLISION(piece, x, y)) != 0.0;
  }

  // A 4 x 4 shape whose only cell that is not 0 holds this value under this tag.
  static Array shape_with(uint32_t tag, qor_slot value) {
    Array matrix = zero_matrix(4, 4);
    Array row(qor_array_new(0));
    row.reset(qor_array_append_tagged(row.get(), tag, value.f64));
    const Array old(static_cast<QorArray*>(qor_array_get_ptr(matrix.get(), 0)));
    qor_slot slot{};
    slot.arr = row.release();
    qor_array_set(matrix.get(), 0, slot.f64);
    return matrix;
  }

  static Array shape_with_text(const char* text) {
    qor_slot value{};
    value.ptr = copy(text).release();
    return shape_with(QOR_TAG_STRING, value);
  }
};

// ---- collision ----------------------------------------------------------------------------------

TEST_F(MovementTest, AFlatBarCollidesWithTheLeftWallAtColumnMinusOne) {
  const Array piece = shape(i_piece);
  EXPECT_TRUE(collides(piece, -1, 0));
  EXPECT_FALSE(collides(piece, 0, 0));
}

TEST_F(MovementTest, TheSquareCollidesWithTheLeftWallAtColumnMinusTwoOnly) {
  const Array piece = shape(o_piece);
  EXPECT_FALSE(collides(piece, -1, 0));
  EXPECT_TRUE(collides(piece, -2, 0));
}

TEST_F(MovementTest, TheRightWallStandsBehindTheLastColumn) {
  const Array piece = shape(o_piece);
  EXPECT_FALSE(collides(piece, 7, 0));
  EXPECT_TRUE(collides(piece, 8, 0));
  set_board_size(10, 15);
  EXPECT_FALSE(collides(piece, 12, 0));
  EXPECT_TRUE(collides(piece, 13, 0));
}

TEST_F(MovementTest, TheFloorLiesBelowTheLastRow) {
  const Array piece = shape(o_piece);
  EXPECT_FALSE(collides(piece, 3, 13));
  EXPECT_TRUE(collides(piece, 3, 14));
  set_board_size(10, 15);
  EXPECT_FALSE(collides(piece, 3, 8));
  EXPECT_TRUE(collides(piece, 3, 9));
}

TEST_F(MovementTest, APieceCollidesWithABlockUnderOneOfItsCells) {
  const Array piece = shape(t_piece);
  put(6, 5);
  EXPECT_TRUE(collides(piece, 3, 5)) << "its right arm";
  EXPECT_TRUE(collides(piece, 4, 6)) << "its tip";
  EXPECT_FALSE(collides(piece, 3, 6)) << "the empty corner of its matrix";
}

TEST_F(MovementTest, EveryKindOfBlockIsInTheWay) {
  for (int kind = 1; kind <= 12; ++kind) {
    put(7, 4, kind);
    EXPECT_TRUE(collides(shape(single_cell), 3, 6)) << "kind " << kind;
  }
}

TEST_F(MovementTest, AboveTheTopEdgeOnlyTheVisibleCellsCollide) {
  const Array piece = shape(o_piece);
  EXPECT_FALSE(collides(piece, 3, -1));
  put(0, 4);
  EXPECT_TRUE(collides(piece, 3, -1)) << "its lower row is on the board";
  EXPECT_FALSE(collides(piece, 3, -2)) << "it is wholly above";
}

TEST_F(MovementTest, TheSideWallsReachAboveTheTopEdge) {
  EXPECT_TRUE(collides(shape(o_piece), -2, -4));
  EXPECT_TRUE(collides(shape(o_piece), 8, -4));
}

TEST_F(MovementTest, AShapeWithoutCellsCollidesWithNothing) {
  fill_row(5);
  EXPECT_FALSE(collides(shape({}), -9, 99));
}

TEST_F(MovementTest, ATextInAShapeCountsByItsNumber) {
  EXPECT_TRUE(collides(shape_with_text("1"), -1, 0));
  EXPECT_FALSE(collides(shape_with_text("0"), -1, 0));
  EXPECT_FALSE(collides(shape_with_text("none"), -1, 0));
}

TEST_F(MovementTest, AnArrayInAShapeCountsAsEmpty) {
  qor_slot value{};
  value.arr = zeros(3).release();
  EXPECT_FALSE(collides(shape_with(QOR_TAG_ARRAY, value), -1, 0));
}

TEST_F(MovementTest, ACheckThatAnErrorCutsShortSaysThatNothingCollides) {
  qor_err_set("pending", 1);
  EXPECT_EQ(run(CHECKCOLLISION(shape(i_piece), -1, 0)), 0.0);
  EXPECT_EQ(take_error(), "pending");
}

TEST_F(MovementTest, ACollisionCheckSendsNothing) {
  collides(shape(i_piece), 0, 0);
  EXPECT_EQ(host().commands, 0);
}

// ---- rotation -----------------------------------------------------------------------------------

TEST_F(MovementTest, AFlatBarTurnsIntoAVerticalOneInColumnOne) {
  EXPECT_EQ(shape_text(run(ROTATEMATRIX(shape(i_piece)))), ".#..\n.#..\n.#..\n.#..\n");
}

TEST_F(MovementTest, ATurnIsAnticlockwiseAboutTheMatrixCentre) {
  EXPECT_EQ(shape_text(run(ROTATEMATRIX(shape({"#...", "###."})))), "....\n.#..\n.#..\n##..\n");
}

TEST_F(MovementTest, ATurnLeavesTheArgumentAsItWas) {
  const Array piece = shape(t_piece);
  const Array turned = run(ROTATEMATRIX(piece));
  put_cell(turned.get(), 3, 3, 1.0);
  EXPECT_EQ(shape_text(piece), ".#..\n###.\n....\n....\n");
}

TEST_F(MovementTest, ATurnAsksTheHostForTheTranspose) {
  run(ROTATEMATRIX(shape({"#...", "###."})));
  EXPECT_TRUE(same(new_trace(), {"TRANSPOSE [[1,0,0,0],[1,1,1,0],[0,0,0,0],[0,0,0,0]]"}));
}

TEST_F(MovementTest, APieceTurnsInPlaceWhenItCan) {
  hold(shape(t_piece), 6, 3, 4);
  run(TRYROTATE());
  EXPECT_EQ(shape_text(CURRENTPIECE), "....\n.#..\n##..\n.#..\n");
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(PIECEY, 4);
  EXPECT_EQ(PIECECOLOR, 6);
}

TEST_F(MovementTest, BlockedInPlaceAPieceTurnsOneColumnToTheLeft) {
  hold(shape(i_piece), 1, 3, 4);
  put(7, 4);
  run(TRYROTATE());
  EXPECT_EQ(PIECEX, 2);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n.#..\n.#..\n.#..\n");
}

TEST_F(MovementTest, BlockedInPlaceAndOnTheLeftAPieceTurnsOneColumnToTheRight) {
  hold(shape(i_piece), 1, 3, 4);
  put(7, 4);
  put(7, 3);
  run(TRYROTATE());
  EXPECT_EQ(PIECEX, 4);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n.#..\n.#..\n.#..\n");
}

TEST_F(MovementTest, BlockedAtAllThreePlacesNothingChanges) {
  hold(shape(i_piece), 1, 3, 4);
  for (const int64_t column : {3, 4, 5})
    put(7, column);
  run(TRYROTATE());
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(PIECEY, 4);
  EXPECT_EQ(shape_text(CURRENTPIECE), "....\n####\n....\n....\n");
}

TEST_F(MovementTest, AKickIsNeverTwoColumnsWide) {
  hold(shape({".#..", ".#..", ".#..", ".#.."}), 1, 3, 4);
  put(6, 5); // two columns to the left the flat bar would fit into columns 1 to 4
  run(TRYROTATE());
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n.#..\n.#..\n.#..\n");
}

TEST_F(MovementTest, AKickIsNeverVertical) {
  hold(shape(i_piece), 1, 3, 12); // upright it would stand in rows 12 to 15
  run(TRYROTATE());
  EXPECT_EQ(PIECEY, 12);
  EXPECT_EQ(shape_text(CURRENTPIECE), "....\n####\n....\n....\n");
}

TEST_F(MovementTest, AFailedTurnLeavesThePieceAsItWas) {
  hold(shape(t_piece), 6, 3, 4);
  host().fail_name = "TRANSPOSE";
  run(TRYROTATE());
  EXPECT_EQ(take_error(), "TRANSPOSE: failed on command");
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n###.\n....\n....\n");
  EXPECT_EQ(PIECEX, 3);
}

// ---- ghost --------------------------------------------------------------------------------------

TEST_F(MovementTest, TheGhostStandsWhereThePieceRests) {
  hold(shape(o_piece), 4, 3, 13);
  EXPECT_EQ(run(GHOSTY()), 13.0);
  put(8, 5);
  PIECEY = 6;
  EXPECT_EQ(run(GHOSTY()), 6.0);
}

TEST_F(MovementTest, TheGhostStandsAtTheLowestFreeRow) {
  hold(shape(o_piece), 4, 3, 0);
  EXPECT_EQ(run(GHOSTY()), 13.0);
  put(10, 4);
  EXPECT_EQ(run(GHOSTY()), 8.0);
  set_board_size(10, 15);
  EXPECT_EQ(run(GHOSTY()), 8.0);
}

TEST_F(MovementTest, TheGhostStopsAboveAnOverhang) {
  hold(shape(single_cell), 8, 3, 0);
  put(6, 4);
  EXPECT_EQ(run(GHOSTY()), 4.0);
}

TEST_F(MovementTest, LookingForTheGhostDoesNotMoveThePiece) {
  hold(shape(o_piece), 4, 3, 2);
  run(GHOSTY());
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(PIECEY, 2);
  EXPECT_EQ(host().commands, 0);
}

TEST_F(MovementTest, FractionsAreCutFromTheSumOfShapeAndPlace) {
  const Array piece = shape({"....", ".#.."}); // its cell is in row 1 and column 1
  EXPECT_FALSE(collides(piece, -1.5, 0)) << "1 - 1.5 is in column 0";
  EXPECT_FALSE(collides(piece, -1.75, 0));
  EXPECT_TRUE(collides(piece, -2, 0));
  put(13, 3);
  put(0, 0);
  EXPECT_TRUE(collides(piece, 2.9, 12.9)) << "3.9 and 13.9 are in column 3 and row 13";
  EXPECT_TRUE(collides(piece, -1.5, -1.5)) << "-0.5 is in column 0 and row 0";
  put(0, 0, 0);
  put(1, 0);
  EXPECT_FALSE(collides(piece, -1.5, -1.5));
  EXPECT_FALSE(collides(piece, 7.9, 12.9));
  EXPECT_FALSE(collides(piece, 8, 13.9));
  EXPECT_TRUE(collides(piece, 9.0, 0));
  EXPECT_TRUE(collides(piece, 0, 14.0));
}

TEST_F(MovementTest, TheGhostOfAShapeWithoutCellsIsFoundAllTheSame) {
  hold(shape({}), 1, 3, 0);
  EXPECT_GE(run(GHOSTY()), static_cast<double>(ROWS));
}

TEST_F(MovementTest, EachPassOfTheGhostSearchHasAFrameScopeOfItsOwn) {
  hold(shape(o_piece), 4, 3, 0);
  run(GHOSTY());
  EXPECT_EQ(host().frames, 14); // thirteen rows fallen, and the pass that finds the floor
  EXPECT_EQ(host().open_frames, 0);
}

// ---- hard drop ----------------------------------------------------------------------------------

TEST_F(MovementTest, AHardDropLocksThePieceAtItsGhost) {
  hold(shape(o_piece), 4, 3, 0);
  run(HARDDROP());
  EXPECT_EQ(blocks_on_board(), 4);
  EXPECT_EQ(at(13, 4), 4.0);
  EXPECT_EQ(at(14, 5), 4.0);
}

TEST_F(MovementTest, AHardDropLeavesAStreakForEachCellInRowMajorOrder) {
  BX = 150;
  BY = 80;
  hold(shape(t_piece), 6, 2, 1);
  run(HARDDROP());
  EXPECT_EQ(streaks(), (std::vector<Streak>{{276, 116, 548}, // the tip in row 0
                                            {240, 152, 584},
                                            {276, 152, 584},
                                            {312, 152, 584}}));
  EXPECT_EQ(qor_array_get(STR_LIFE.get(), 0), 8.0);
}

TEST_F(MovementTest, AHardDropOfNoDistanceStillStreaksAndLocks) {
  hold(shape(o_piece), 4, 3, 13);
  run(HARDDROP());
  EXPECT_EQ(streaks(), (std::vector<Streak>{
                           {162, 468, 468}, {198, 468, 468}, {162, 504, 504}, {198, 504, 504}}));
  EXPECT_EQ(blocks_on_board(), 4);
}

TEST_F(MovementTest, StreaksThatFindNoFreeSlotAreDropped) {
  for (int64_t slot = 0; slot < NSTREAK - 1; ++slot)
    qor_array_set(STR_LIFE.get(), slot, 3.0);
  hold(shape(o_piece), 4, 3, 13);
  run(HARDDROP());
  ASSERT_EQ(std::ssize(streaks()), NSTREAK);
  EXPECT_EQ(streaks().back(), (Streak{162, 468, 468}));
  EXPECT_EQ(qor_array_get(STR_LIFE.get(), 0), 3.0) << "live ones are never overwritten";
}

TEST_F(MovementTest, TheFallItselfEarnsNothing) {
  host().chance.assign(100, 0.9);
  put(14, 0, 1); // -4.5, and the square in columns 4 and 5 adds nothing: balanced
  hold(shape(o_piece), 4, 3, 0);
  run(HARDDROP());
  EXPECT_EQ(SCORE, 5 + 20);
}

TEST_F(MovementTest, EachPassOfTheDropHasAFrameScopeOfItsOwn) {
  hold(shape(o_piece), 4, 3, 0);
  run(HARDDROP());
  EXPECT_EQ(host().frames, 14);
}

TEST_F(MovementTest, ADropThatAnErrorCutsShortDoesNotLock) {
  hold(shape(o_piece), 4, 3, 0);
  qor_err_set("pending", 1);
  run(HARDDROP());
  EXPECT_EQ(take_error(), "pending");
  EXPECT_EQ(blocks_on_board(), 0);
  EXPECT_TRUE(streaks().empty());
  EXPECT_EQ(host().commands, 0);
}

} // namespace
} // namespace kavo::test
