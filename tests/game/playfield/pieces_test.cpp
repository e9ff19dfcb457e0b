// The piece set, the roll of the next piece, its entry on the board and what it is worth.
#include "game/playfield/pieces.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class PiecesTest : public GameTest {
protected:
  // Rolls the preview with these two draws and gives its kind.
  static int64_t roll(double first, double second) {
    host().chance = {first, second};
    run(ROLLNEXT());
    return NEXTCOLOR;
  }

  // The second draw that gives the standard shape `index`, counted from 0.
  static double draw_of(int index) { return (index + 0.5) / 7; }

  static std::string rolled_shape(double first, double second) {
    roll(first, second);
    return shape_text(NEXTPIECE);
  }
};

// ---- the shapes ---------------------------------------------------------------------------------

constexpr double standard = 0.5; // a first draw that gives a standard piece
constexpr double special = 0.1;  // and one that gives a special one

struct Kind {
  int64_t kind;
  const char* shape;
};

TEST_F(PiecesTest, TheSevenStandardPiecesHaveTheirShapesAndKinds) {
  constexpr Kind kinds[] = {
      {1, "....\n####\n....\n....\n"}, {2, "#...\n###.\n....\n....\n"},
      {3, "..#.\n###.\n....\n....\n"}, {4, ".##.\n.##.\n....\n....\n"},
      {5, ".##.\n##..\n....\n....\n"}, {6, ".#..\n###.\n....\n....\n"},
      {7, "##..\n.##.\n....\n....\n"},
  };
  for (int index = 0; index < 7; ++index) {
    EXPECT_EQ(roll(standard, draw_of(index)), kinds[index].kind);
    EXPECT_EQ(shape_text(NEXTPIECE), kinds[index].shape) << "kind " << kinds[index].kind;
  }
}

TEST_F(PiecesTest, EverySpecialPieceIsOneCellInTheSecondRowAndColumn) {
  for (const double second : {0.0, 0.3, 0.5, 0.7, 0.9})
    EXPECT_EQ(rolled_shape(special, second), "....\n.#..\n....\n....\n");
}

TEST_F(PiecesTest, OccupiedCellsHoldTheNumberOne) {
  roll(standard, draw_of(3));
  EXPECT_EQ(cell_at(NEXTPIECE.get(), 0, 1), 1.0);
  roll(special, 0.0);
  EXPECT_EQ(cell_at(NEXTPIECE.get(), 1, 1), 1.0);
}

TEST_F(PiecesTest, AShapeAlwaysHasFourRowsOfFour) {
  for (const double first : {standard, special}) {
    roll(first, 0.0);
    ASSERT_EQ(qor_array_len(NEXTPIECE.get()), 4);
    for (int64_t row = 0; row < 4; ++row)
      EXPECT_EQ(
          qor_array_len(static_cast<const QorArray*>(qor_array_get_ptr(NEXTPIECE.get(), row))), 4);
  }
}

// ---- the roll -----------------------------------------------------------------------------------

TEST_F(PiecesTest, AFirstDrawOfExactlyFifteenHundredthsGivesAStandardPiece) {
  EXPECT_EQ(roll(0.15, 0.0), 1);
  EXPECT_EQ(roll(0.1499, 0.0), 8);
}

TEST_F(PiecesTest, ASecondDrawOfExactlyAQuarterGivesTheCrossLineBlaster) {
  EXPECT_EQ(roll(special, 0.25), 9);
  EXPECT_EQ(roll(special, 0.2499), 8);
}

TEST_F(PiecesTest, ASecondDrawOfExactlyFourFifthsGivesTheRowFiller) {
  EXPECT_EQ(roll(special, 0.8), 12);
  EXPECT_EQ(roll(special, 0.7999), 11);
}

TEST_F(PiecesTest, TheOtherBandsOfTheSecondDrawAreHalfOpenToo) {
  EXPECT_EQ(roll(special, 0.0), 8);
  EXPECT_EQ(roll(special, 0.4699), 9);
  EXPECT_EQ(roll(special, 0.47), 10);
  EXPECT_EQ(roll(special, 0.5999), 10);
  EXPECT_EQ(roll(special, 0.6), 11);
  EXPECT_EQ(roll(special, 0.9999), 12);
}

TEST_F(PiecesTest, StandardKindsShareTheSecondDrawEvenly) {
  EXPECT_EQ(roll(standard, 0.0), 1);
  EXPECT_EQ(roll(standard, 0.1428), 1);
  EXPECT_EQ(roll(standard, 0.1429), 2);
  EXPECT_EQ(roll(standard, 0.8571), 6);
  EXPECT_EQ(roll(standard, 0.8572), 7);
  EXPECT_EQ(roll(standard, 0.9999), 7);
}

TEST_F(PiecesTest, ADrawBeyondTheRangeLeavesThePreviewAsItWas) {
  roll(standard, draw_of(5));
  EXPECT_EQ(roll(standard, 1.0), 6);
  EXPECT_EQ(shape_text(NEXTPIECE), ".#..\n###.\n....\n....\n");
}

TEST_F(PiecesTest, EveryRollMakesExactlyTwoDraws) {
  roll(standard, 0.0);
  roll(special, 0.0);
  EXPECT_TRUE(same(new_trace(), {"RND i1", "RND i1", "RND i1", "RND i1"}));
}

TEST_F(PiecesTest, TwoRollsOfTheSameKindNeverShareAMatrix) {
  roll(standard, 0.0);
  run(SPAWNPIECE());
  roll(standard, 0.0);
  ASSERT_NE(CURRENTPIECE.get(), NEXTPIECE.get());
  put_cell(CURRENTPIECE.get(), 1, 0, 0.0);
  EXPECT_EQ(shape_text(NEXTPIECE), "....\n####\n....\n....\n");
}

TEST_F(PiecesTest, ARollOfTheSameKindReplacesTheMatrix) {
  for (const double chance : {standard, special}) {
    roll(chance, 0.0);
    const QorArray* first = NEXTPIECE.get();
    const void* first_row = qor_array_get_ptr(first, 0);
    roll(chance, 0.0);
    EXPECT_NE(NEXTPIECE.get(), first);
    EXPECT_NE(qor_array_get_ptr(NEXTPIECE.get(), 0), first_row);
  }
}

// ---- the entry ----------------------------------------------------------------------------------

TEST_F(PiecesTest, ANewPieceStartsAtColumnThreeOfTenColumns) {
  run(SPAWNPIECE());
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(PIECEY, 0);
}

TEST_F(PiecesTest, ANewPieceStartsAtColumnFiveOfFifteenColumns) {
  set_board_size(10, 15);
  PIECEY = 7;
  run(SPAWNPIECE());
  EXPECT_EQ(PIECEX, 5);
  EXPECT_EQ(PIECEY, 0);
}

TEST_F(PiecesTest, ThePreviewBecomesTheFallingPieceAndANewOneIsRolled) {
  roll(standard, draw_of(5));
  host().chance = {special, 0.5};
  run(SPAWNPIECE());
  EXPECT_EQ(PIECECOLOR, 6);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n###.\n....\n....\n");
  EXPECT_EQ(NEXTCOLOR, 10);
  EXPECT_EQ(shape_text(NEXTPIECE), "....\n.#..\n....\n....\n");
}

TEST_F(PiecesTest, AnEntryDoesNotAskWhetherThePieceFits) {
  fill_row(0);
  fill_row(1);
  run(SPAWNPIECE());
  EXPECT_FALSE(GAMEOVER);
}

// ---- the points ---------------------------------------------------------------------------------

TEST_F(PiecesTest, TheSquareIsWorthFive) {
  EXPECT_EQ(run(PIECE_POINTS(4)), 5.0);
}

TEST_F(PiecesTest, TheHeavyBlockIsWorthTen) {
  EXPECT_EQ(run(PIECE_POINTS(11)), 10.0);
}

TEST_F(PiecesTest, TheCrossLineBlasterIsWorthNothing) {
  EXPECT_EQ(run(PIECE_POINTS(9)), 0.0);
}

TEST_F(PiecesTest, NoKindAtAllIsWorthTen) {
  EXPECT_EQ(run(PIECE_POINTS(0)), 10.0);
}

TEST_F(PiecesTest, EveryKindHasItsPoints) {
  constexpr double points[] = {10, 15, 15, 5, 20, 25, 20, 0, 0, 0, 10, 10};
  for (int kind = 1; kind <= 12; ++kind)
    EXPECT_EQ(run(PIECE_POINTS(kind)), points[kind - 1]) << "kind " << kind;
}

TEST_F(PiecesTest, ANumberThatIsNoKindIsWorthTen) {
  for (const double other : {-1.0, 3.5, 13.0, 1e18})
    EXPECT_EQ(run(PIECE_POINTS(other)), 10.0) << other;
}

// ---- failures -----------------------------------------------------------------------------------

TEST_F(PiecesTest, AFailedFirstDrawLeavesThePreviewAsItWas) {
  roll(standard, draw_of(5));
  host().fail_at = host().commands + 1;
  roll(special, 0.0);
  EXPECT_EQ(take_error(), "RND: failed on command");
  EXPECT_EQ(NEXTCOLOR, 6);
  EXPECT_EQ(shape_text(NEXTPIECE), ".#..\n###.\n....\n....\n");
}

TEST_F(PiecesTest, AFailedSecondDrawMayLeaveTheSingleCellWithTheOldKind) {
  roll(standard, draw_of(5));
  host().fail_at = host().commands + 2;
  roll(special, 0.0);
  EXPECT_EQ(take_error(), "RND: failed on command");
  EXPECT_EQ(NEXTCOLOR, 6);
  EXPECT_EQ(shape_text(NEXTPIECE), "....\n.#..\n....\n....\n");
}

TEST_F(PiecesTest, AnEntryWhoseRollFailsHasAlreadyHandedThePreviewOver) {
  roll(standard, draw_of(3));
  host().fail_name = "RND";
  run(SPAWNPIECE());
  EXPECT_EQ(take_error(), "RND: failed on command");
  EXPECT_EQ(PIECECOLOR, 4);
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".##.\n.##.\n....\n....\n");
}

} // namespace
} // namespace kavo::test
