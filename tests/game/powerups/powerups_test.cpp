// What the special pieces do when they land.
#include "game/playfield/locking.h"
#include "game/powerups/powerups.h"
#include "game/presentation/cells.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

// A board shape and the cell in which a power-up comes to rest.
struct Place {
  int64_t rows, columns, row, column;
};

constexpr Place places[] = {
    {15, 10, 8, 4},  {15, 10, 0, 0}, {15, 10, 0, 9},  {15, 10, 14, 0}, {15, 10, 14, 9},
    {10, 15, 5, 11}, {10, 15, 0, 0}, {10, 15, 0, 14}, {10, 15, 9, 0},  {10, 15, 9, 14},
};

class PowerUpTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    BX = 150;
    BY = 80;
  }

  static void fire(double kind, int64_t row, int64_t column) {
    put(row, column, kind);
    run(TRIGGERPOWERUP(kind, static_cast<double>(row), static_cast<double>(column)));
  }

  // Fires on an otherwise empty board of every shape, in the open and in every corner.
  template<typename Check>
  static void fire_everywhere(double kind, Check check) {
    for (const Place& place : places) {
      SCOPED_TRACE(::testing::Message() << place.rows << " x " << place.columns << ", row "
                                        << place.row << ", column " << place.column);
      start_afresh();
      BX = 150;
      BY = 80;
      set_board_size(place.rows, place.columns);
      fire(kind, place.row, place.column);
      check(place);
    }
  }

  // The top-left corner of a cell on the screen, with what pops up there.
  static std::vector<Popup> popup_at(const Place& place, double points) {
    return {{150.0 + 36.0 * static_cast<double>(place.column),
             80.0 + 36.0 * static_cast<double>(place.row), points}};
  }

  static std::string label_of(double kind) { return chars(run(PU_LABEL$(kind))); }

  // Every cell but those of one column, in which no row can be full.
  static void fill_but_column(int64_t empty) {
    for (int64_t row = 0; row < ROWS; ++row) {
      fill_row(row);
      put(row, empty, 0);
    }
  }
};

// ---- bomb ---------------------------------------------------------------------------------------

TEST_F(PowerUpTest, ABombInTheTopLeftCornerEmptiesTheFourCellsOnTheBoard) {
  fill_but_column(5);
  fire(8, 0, 0);
  EXPECT_EQ(blocks_on_board(), 15 * 9 - 4);
  EXPECT_EQ(board_text().substr(0, 33), "..111.1111\n..111.1111\n11111.1111\n");
}

TEST_F(PowerUpTest, ABombInTheOpenEmptiesNineCellsAndTheBlocksAboveFall) {
  fill_but_column(0);
  put(6, 5, 7);
  fire(8, 8, 5);
  EXPECT_EQ(blocks_on_board(), 15 * 9 - 9);
  EXPECT_EQ(at(9, 5), 7.0);
  EXPECT_EQ(at(2, 4), 0.0);
  EXPECT_EQ(at(3, 4), 1.0);
}

TEST_F(PowerUpTest, ABombAtTheLastColumnOfTheWideBoardEmptiesSixCells) {
  set_board_size(10, 15);
  fill_but_column(0);
  fire(8, 5, 14);
  EXPECT_EQ(blocks_on_board(), 10 * 14 - 6);
}

TEST_F(PowerUpTest, ABombScoresShakesAnnouncesSparksAndThunders) {
  fire_everywhere(8, [](const Place& place) {
    EXPECT_EQ(SCORE, 150);
    EXPECT_EQ(popups(), popup_at(place, 150));
    EXPECT_EQ(SHAKE, 18);
    EXPECT_EQ(FLASH, 14);
    EXPECT_TRUE(same(drawn(), joined({Trace(26 * 3, "RND 1"), {R"(SOUND.PLAY 5 "c2")"}})));
    EXPECT_EQ(blocks_on_board(), 0);
  });
}

TEST_F(PowerUpTest, ABombThrowsOrangeSparksFromTheMiddleOfItsCell) {
  host().chance = {0.0, 0.6, 0.0};
  fire(8, 8, 4);
  const auto sparks = particles_of({250, 160, 60});
  ASSERT_EQ(sparks.size(), 26U);
  EXPECT_EQ(sparks.front().x, 150 + 4 * 36 + 18);
  EXPECT_EQ(sparks.front().y, 80 + 8 * 36 + 18);
  EXPECT_DOUBLE_EQ(sparks.front().vx, 7.0);
}

// ---- cross-line ---------------------------------------------------------------------------------

TEST_F(PowerUpTest, ACrossLineInTheCornerEmptiesItsRowAndItsColumn) {
  fill_but_column(5);
  put(14, 5);
  put(14, 0, 9);
  run(TRIGGERPOWERUP(9, 14, 0));
  EXPECT_EQ(blocks_on_board(), 15 * 9 + 1 - 24);
  for (int64_t row = 0; row < 15; ++row)
    EXPECT_EQ(at(row, 0), 0.0);
}

TEST_F(PowerUpTest, ACrossLineInTheOpenLetsTheRowsAboveSink) {
  fill_but_column(0);
  put(3, 7, 6);
  fire(9, 8, 5);
  EXPECT_EQ(at(4, 7), 6.0);
  EXPECT_EQ(blocks_on_board(), 15 * 9 - 9 - 14);
}

TEST_F(PowerUpTest, ACrossLineOnTheWideBoardReachesItsEdges) {
  set_board_size(10, 15);
  fill_but_column(0);
  fire(9, 9, 14);
  EXPECT_EQ(blocks_on_board(), 10 * 14 - 14 - 9);
}

TEST_F(PowerUpTest, ACrossLineScoresShakesAnnouncesAndRings) {
  fire_everywhere(9, [](const Place& place) {
    EXPECT_EQ(SCORE, 250);
    EXPECT_EQ(popups(), popup_at(place, 250));
    EXPECT_EQ(SHAKE, 16);
    EXPECT_EQ(FLASH, 14);
    EXPECT_TRUE(same(drawn(), {R"(SOUND.PLAY 4 "g4")"}));
    EXPECT_EQ(blocks_on_board(), 0);
  });
}

// ---- coin ---------------------------------------------------------------------------------------

TEST_F(PowerUpTest, ACoinThatCompletesTheBottomRowLeavesItAndTheColumnAboveFalls) {
  set_bottom({"....2.....", "....3.....", "1111a11111"});
  run(TRIGGERPOWERUP(10, 14, 4));
  EXPECT_EQ(LINESCLEARED, 1) << "the block above fell into the gap";
  EXPECT_EQ(bottom_text(2), "..........\n....2.....\n");
}

TEST_F(PowerUpTest, ACoinOnAFullBottomRowWithoutABlockAboveDoesNotClearIt) {
  set_bottom({"1111a11111"});
  run(TRIGGERPOWERUP(10, 14, 4));
  EXPECT_EQ(LINESCLEARED, 0);
  EXPECT_EQ(bottom_text(1), "1111.11111\n");
}

TEST_F(PowerUpTest, ACoinScoresAndRingsButNeitherShakesNorAnnounces) {
  fire_everywhere(10, [](const Place& place) {
    EXPECT_EQ(SCORE, 500);
    EXPECT_EQ(popups(), popup_at(place, 500));
    EXPECT_EQ(SHAKE, 0);
    EXPECT_EQ(FLASH, 0);
    EXPECT_TRUE(same(drawn(), {R"(SOUND.PLAY 4 "g4")"}));
    EXPECT_EQ(blocks_on_board(), 0);
  });
}

TEST_F(PowerUpTest, ACoinLeavesARunningShakeAndBannerAlone) {
  SHAKE = 5;
  FLASH = 6;
  fire(10, 14, 4);
  EXPECT_EQ(SHAKE, 5);
  EXPECT_EQ(FLASH, 6);
}

// ---- row filler ---------------------------------------------------------------------------------

TEST_F(PowerUpTest, ARowFillerOnTheFloorFillsItsRowWhichIsCleared) {
  set_bottom({"2.........", "1..c....11"});
  run(TRIGGERPOWERUP(12, 14, 3));
  EXPECT_EQ(LINESCLEARED, 1);
  EXPECT_EQ(bottom_text(1), "2.........\n");
  EXPECT_EQ(SCORE, 100 + 100);
}

TEST_F(PowerUpTest, ARowFillerAboveEmptyCellsFallsApartAndIsNotCleared) {
  set_bottom({"...c......", "1.11111111"});
  run(TRIGGERPOWERUP(12, 13, 3));
  EXPECT_EQ(LINESCLEARED, 1) << "the row below was completed instead";
  EXPECT_EQ(bottom_text(2), "..........\n4.4c444444\n");
}

TEST_F(PowerUpTest, ARowFillerKeepsItsOwnKindAndTheBlocksThatWereThere) {
  set_bottom({"7..c...5..", ".111111111"}); // the 7 falls out and completes the row below
  run(TRIGGERPOWERUP(12, 13, 3));
  EXPECT_EQ(bottom_text(1), ".44c444544\n");
}

TEST_F(PowerUpTest, ARowFillerScoresAnnouncesAndRingsButDoesNotShake) {
  fire_everywhere(12, [](const Place& place) {
    EXPECT_EQ(SCORE, 100 + 100) << "a row of its own falls to the floor and is cleared";
    EXPECT_EQ(popups().front(), popup_at(place, 100).front());
    EXPECT_EQ(SHAKE, 0);
    EXPECT_EQ(FLASH, 14);
    const Trace sent = drawn();
    EXPECT_EQ(sent.front(), R"(SOUND.PLAY 4 "g4")");
    EXPECT_EQ(sent.back(), R"(SOUND.PLAY 4 "g4")");
    EXPECT_EQ(only("SOUND.PLAY", sent).size(), 2U);
    EXPECT_EQ(blocks_on_board(), 0);
  });
}

// ---- any kind -----------------------------------------------------------------------------------

TEST_F(PowerUpTest, AnyOtherKindOnlySettlesAndClears) {
  put(3, 0, 5);
  fill_row(14);
  put(3, 4, 11);
  run(TRIGGERPOWERUP(11, 3, 4));
  EXPECT_EQ(bottom_text(1), "5...b.....\n");
  EXPECT_EQ(SCORE, 100);
}

TEST_F(PowerUpTest, RowsClearedByAPowerUpCountIntoTheLock) {
  CLEAREDTURN = 0;
  fill_row(14);
  fire(10, 3, 3);
  EXPECT_EQ(CLEAREDTURN, 1);
}

TEST_F(PowerUpTest, AFiringBlockThatLandsFiresBeforeItIsScored) {
  host().chance.assign(400, 0.9);
  NEXTPIECE = shape(t_piece);
  hold(shape(single_cell), 8, 3, 13);
  put(14, 5, 2);
  put(14, 9, 2);
  run(LOCKSEQUENCE());
  EXPECT_EQ(bottom_text(1), ".........2\n");
  EXPECT_EQ(SCORE, 150 + 20);
}

TEST_F(PowerUpTest, WithoutEffectsAPowerUpIsSilent) {
  SFXON = 0;
  for (const double kind : {8.0, 9.0, 10.0, 12.0})
    fire(kind, 4, 4);
  EXPECT_TRUE(only("SOUND.PLAY", new_trace()).empty());
}

// ---- labels -------------------------------------------------------------------------------------

TEST_F(PowerUpTest, AnOrdinaryBlockHasNoLabel) {
  EXPECT_EQ(label_of(7), "");
}

TEST_F(PowerUpTest, TheHeavyBlockIsLabelledA) {
  EXPECT_EQ(label_of(11), "A");
}

TEST_F(PowerUpTest, EveryPowerUpHasItsLetter) {
  EXPECT_EQ(label_of(8), "B");
  EXPECT_EQ(label_of(9), "L");
  EXPECT_EQ(label_of(10), "$");
  EXPECT_EQ(label_of(12), "*");
}

TEST_F(PowerUpTest, WhatIsNoKindHasNoLabel) {
  for (const double other : {0.0, -8.0, 8.5, 13.0})
    EXPECT_EQ(label_of(other), "") << other;
}

// ---- failures -----------------------------------------------------------------------------------

TEST_F(PowerUpTest, WhicheverCommandFailsThePowerUpStopsThere) {
  for (const double kind : {8.0, 9.0, 10.0, 12.0})
    EXPECT_GE(fail_each_command([] { fill_row(14); }, [kind] { fire(kind, 5, 5); }), 1);
}

TEST_F(PowerUpTest, AfterAFailureNeitherSettlingNorClearingRuns) {
  put(3, 0, 5);
  fill_row(14);
  host().fail_name = "SOUND.PLAY";
  fire(10, 8, 4);
  EXPECT_EQ(take_error(), "SOUND.PLAY: failed on command");
  EXPECT_EQ(at(3, 0), 5.0);
  EXPECT_EQ(LINESCLEARED, 0);
  EXPECT_EQ(SCORE, 500);
}

} // namespace
} // namespace kavo::test
