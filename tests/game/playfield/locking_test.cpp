// What happens when the falling piece can go no lower.
#include "game/playfield/locking.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

class LockingTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    without_star();
    NEXTPIECE = shape(t_piece);
    NEXTCOLOR = 6;
  }

  // No star after the lock, and previews of kind 7.
  static void without_star() { host().chance.assign(400, 0.9); }

  // Locks a square in the middle of the floor, which pulls the board to neither side.
  static void lock_square(int64_t y = 13) {
    hold(shape(o_piece), 4, 3, y);
    run(LOCKSEQUENCE());
  }

  // The square completes the two bottom rows.
  static void lock_square_that_clears() {
    set_bottom({"1111..1111", "1111..1111"});
    lock_square();
  }

  // Nine blocks at the right-hand edge pull with 40.5.
  static void pull_over_the_threshold() {
    for (int64_t row = 6; row < 15; ++row)
      put(row, 9, 3);
  }

  static constexpr const char* lock_sound = R"(SOUND.PLAY 3 "c3")";
  static constexpr const char* clear_sound = R"(SOUND.PLAY 4 "g4")";
  static constexpr const char* lean_sound = R"(SOUND.PLAY 5 "c2")";
  static constexpr const char* over_sound = R"(SOUND.PLAY 5 "c1")";
};

// ---- the piece becomes blocks -------------------------------------------------------------------

TEST_F(LockingTest, EveryCellOfThePieceBecomesABlockOfItsKind) {
  hold(shape(t_piece), 6, 2, 4);
  run(LOCKPIECE());
  EXPECT_EQ(blocks_on_board(), 4);
  EXPECT_EQ(at(4, 3), 6.0);
  EXPECT_EQ(at(5, 2), 6.0);
  EXPECT_EQ(at(5, 4), 6.0);
}

TEST_F(LockingTest, CellsOutsideTheBoardAreDroppedWithoutAWord) {
  hold(shape(i_piece), 1, -2, 3);
  run(LOCKPIECE());
  EXPECT_EQ(blocks_on_board(), 2);
  hold(shape(i_piece), 1, 8, 5);
  run(LOCKPIECE());
  EXPECT_EQ(blocks_on_board(), 4);
  hold(shape(o_piece), 4, 3, 14);
  run(LOCKPIECE());
  EXPECT_EQ(blocks_on_board(), 6);
}

TEST_F(LockingTest, APieceAcrossTheTopEdgeKeepsItsLowerCellsAndANewOneThatCollidesEndsTheGame) {
  hold(shape(o_piece), 4, 3, -1);
  run(LOCKSEQUENCE());
  EXPECT_EQ(blocks_on_board(), 2);
  EXPECT_EQ(at(0, 4), 4.0);
  EXPECT_EQ(at(0, 5), 4.0);
  EXPECT_TRUE(GAMEOVER);
}

TEST_F(LockingTest, AFiringBlockIsNotedWithItsCell) {
  for (const int64_t kind : {8, 9, 10, 12}) {
    PUKIND = 0;
    hold(shape(single_cell), kind, 5, 6);
    run(LOCKPIECE());
    EXPECT_EQ(PUKIND, kind);
    EXPECT_EQ(PUBR, 7);
    EXPECT_EQ(PUBC, 6);
  }
}

TEST_F(LockingTest, AHeavyBlockFiresNothing) {
  hold(shape(single_cell), 11, 5, 6);
  run(LOCKPIECE());
  EXPECT_EQ(PUKIND, 0);
  EXPECT_EQ(at(7, 6), 11.0);
}

TEST_F(LockingTest, AnOrdinaryPieceFiresNothing) {
  for (int64_t kind = 1; kind <= 7; ++kind) {
    hold(shape(o_piece), kind, 3, 3);
    run(LOCKPIECE());
    EXPECT_EQ(PUKIND, 0) << "kind " << kind;
  }
}

TEST_F(LockingTest, AFiringBlockAboveTheTopEdgeFiresNothing) {
  hold(shape(single_cell), 8, 3, -2);
  run(LOCKPIECE());
  EXPECT_EQ(PUKIND, 0);
  EXPECT_EQ(blocks_on_board(), 0);
}

TEST_F(LockingTest, APowerUpOfAnEarlierLockIsForgotten) {
  PUKIND = 8;
  CLEAREDTURN = 3;
  lock_square();
  EXPECT_EQ(PUKIND, 0);
  EXPECT_EQ(CLEAREDTURN, 0);
  EXPECT_EQ(blocks_on_board(), 4) << "the old bomb would have emptied the corner";
}

// ---- the order ----------------------------------------------------------------------------------

TEST_F(LockingTest, APlainLockSoundsDustsAsksForAStarAndRollsThePreview) {
  lock_square();
  EXPECT_TRUE(same(drawn(), joined({{lock_sound},
                                    Trace(15, "RND 1"), // five particles of dust
                                    {"RND 1"},          // a star?
                                    Trace(2, "RND 1")})));
}

TEST_F(LockingTest, AClearingLockFlashesBetweenTheDustAndTheStar) {
  lock_square_that_clears();
  const Trace sent = drawn();
  const Trace expected =
      joined({{lock_sound}, Trace(15, "RND 1"), {"DRAWCOLOR 255 255 255", "RECT 0 468 360 36 1"}});
  EXPECT_TRUE(same({sent.begin(), sent.begin() + 18}, expected));
  EXPECT_TRUE(same({sent.end() - 4, sent.end()}, {clear_sound, "RND 1", "RND 1", "RND 1"}));
}

TEST_F(LockingTest, PowerUpItsClearLockTipAndGameOverSoundInThisOrder) {
  arrange_busy_lock();
  run(LOCKSEQUENCE());
  EXPECT_TRUE(same(only("SOUND.PLAY", drawn()),
                   {clear_sound, clear_sound, lock_sound, lean_sound, over_sound}));
  EXPECT_TRUE(GAMEOVER);
}

TEST_F(LockingTest, FullRowsAreClearedBeforeTheBoardLeans) {
  for (int64_t row = 2; row < 13; ++row)
    put(row, 9, 3);
  lock_square_that_clears();
  EXPECT_TRUE(same(only("SOUND.PLAY", drawn()), {lock_sound, clear_sound, lean_sound}));
}

TEST_F(LockingTest, ThePieceIsScoredBeforeTheRows) {
  lock_square_that_clears();
  ASSERT_EQ(popups().size(), 2U);
  EXPECT_EQ(popups()[0][2], 5.0);
  EXPECT_EQ(popups()[1][2], 400.0);
}

TEST_F(LockingTest, AllBonusesArePaidBeforeAStarIsDrawnFor) {
  lock_square_that_clears();
  const int64_t star_draw = host().commands - 2; // the preview's two draws follow it
  start_afresh();
  COMBO = 1;
  host().fail_at = star_draw;
  lock_square_that_clears();
  EXPECT_EQ(take_error(), "RND: failed on command");
  EXPECT_EQ(SCORE, 5 + 400 + 20 + 75);
  EXPECT_EQ(COMBO, 2);
}

// ---- dust ---------------------------------------------------------------------------------------

TEST_F(LockingTest, DustRisesFromUnderThePiece) {
  BX = 150;
  BY = 80;
  lock_square();
  const auto dust = particles_of({170, 160, 140});
  ASSERT_EQ(dust.size(), 5U);
  EXPECT_EQ(dust.front().x, 150 + (3 + 1.5) * 36);
  EXPECT_EQ(dust.front().y, 80 + (13 + 2) * 36);
}

TEST_F(LockingTest, DustHasASpeedOfTwo) {
  host().chance = {0.0, 0.6, 0.0};
  lock_square();
  EXPECT_DOUBLE_EQ(particles().front().vx, 2.0);
}

// ---- points -------------------------------------------------------------------------------------

TEST_F(LockingTest, ThePieceIsScoredAndItsPointsPopUp) {
  BX = 150;
  BY = 80;
  put(14, 0, 11); // no balance bonus beside this much pull
  put(13, 0, 11);
  lock_square();
  EXPECT_EQ(PTS, 5);
  EXPECT_EQ(SCORE, 5);
  EXPECT_EQ(popups(), (std::vector<Popup>{{150 + 4 * 36, 80 + 14 * 36, 5}}));
}

TEST_F(LockingTest, APieceWithoutPointsPopsNothingUp) {
  hold(shape(single_cell), 10, 3, 13);
  run(LOCKSEQUENCE());
  EXPECT_EQ(PTS, 0);
  EXPECT_EQ(popups(), (std::vector<Popup>{{4 * 36, 14 * 36, 500}})) << "the coin's own alone";
}

// ---- balance bonus ------------------------------------------------------------------------------

TEST_F(LockingTest, ABalancedBoardEarnsTwentyWithoutAClearedRow) {
  set_bottom({".........1", ".........1", "........11"}); // 17
  lock_square();
  EXPECT_EQ(SCORE, 5 + 20);
  EXPECT_EQ(CLEAREDTURN, 0);
}

TEST_F(LockingTest, APullOfExactlyEighteenIsNotBalanced) {
  for (const int64_t column : {0, 9}) {
    set_board_size(15, 10);
    SCORE = 0;
    for (int64_t row = 11; row < 15; ++row)
      put(row, column);
    lock_square();
    EXPECT_EQ(SCORE, 5) << "column " << column;
  }
}

TEST_F(LockingTest, AnEmptiedBoardIsBalancedToo) {
  hold(shape(single_cell), 10, 3, 13);
  run(LOCKSEQUENCE());
  EXPECT_EQ(blocks_on_board(), 0);
  EXPECT_EQ(SCORE, 500 + 20);
}

TEST_F(LockingTest, TheBalanceIsWeighedAfterTheTip) {
  for (int64_t row = 3; row < 12; ++row)
    put(row, 9); // on its side this edge lies in the middle of the floor
  lock_square(6);
  EXPECT_EQ(ROWS, 10);
  EXPECT_EQ(SCORE, 5 + 20);
}

// ---- combo --------------------------------------------------------------------------------------

TEST_F(LockingTest, TheFirstClearAfterABreakStartsACountAndPaysNothing) {
  lock_square_that_clears();
  EXPECT_EQ(COMBO, 1);
  EXPECT_EQ(SCORE, 5 + 400 + 20);
  EXPECT_EQ(COMBOFLASH, 0);
  EXPECT_EQ(SHOCKLIFE, 0);
}

TEST_F(LockingTest, TheSecondClearInARowPaysSeventyFive) {
  lock_square_that_clears();
  lock_square_that_clears();
  EXPECT_EQ(COMBO, 2);
  EXPECT_EQ(CBONUS, 75);
  EXPECT_EQ(SCORE, 2 * 425 + 75);
}

TEST_F(LockingTest, EveryFurtherClearPaysSeventyFiveMore) {
  for (int lock = 1; lock <= 5; ++lock)
    lock_square_that_clears();
  EXPECT_EQ(CBONUS, 300);
  EXPECT_EQ(SCORE, 5 * 425 + 75 + 150 + 225 + 300);
}

TEST_F(LockingTest, AComboIsAnnouncedWithABannerAndAShockInTheMiddle) {
  lock_square_that_clears();
  lock_square_that_clears();
  EXPECT_EQ(COMBOSHOW, 2);
  EXPECT_EQ(COMBOFLASH, 45);
  EXPECT_EQ(SHOCKLIFE, 16);
  EXPECT_EQ(SHOCKX, 330.0);
  EXPECT_EQ(SHOCKY, 350.0);
}

TEST_F(LockingTest, ALockThatClearsNothingBreaksTheCombo) {
  COMBO = 4;
  lock_square();
  EXPECT_EQ(COMBO, 0);
  lock_square_that_clears();
  EXPECT_EQ(COMBO, 1);
}

TEST_F(LockingTest, RowsThatAPowerUpClearsCountForTheCombo) {
  COMBO = 1;
  hold(shape(single_cell), 12, 3, 13); // fills the empty bottom row
  run(LOCKSEQUENCE());
  EXPECT_EQ(CLEAREDTURN, 1);
  EXPECT_EQ(COMBO, 2);
}

// ---- star ---------------------------------------------------------------------------------------

TEST_F(LockingTest, ADrawBelowThreeTenthsBringsAStar) {
  host().chance.assign(15, 0.5);
  host().chance.insert(host().chance.end(), {0.2999, 0.0, 0.0, 0.9, 0.9});
  lock_square();
  EXPECT_EQ(stars(), (std::vector<Star>{{2, 0}}));
  EXPECT_TRUE(host().chance.empty()) << "three draws for the star, two for the preview";
}

TEST_F(LockingTest, ADrawOfExactlyThreeTenthsBringsNone) {
  host().chance.assign(15, 0.5);
  host().chance.insert(host().chance.end(), {0.3, 0.9, 0.9});
  lock_square();
  EXPECT_TRUE(stars().empty());
  EXPECT_TRUE(host().chance.empty());
}

// ---- the next piece -----------------------------------------------------------------------------

TEST_F(LockingTest, TheNextPieceComesInAtTheTop) {
  lock_square();
  EXPECT_EQ(PIECECOLOR, 6);
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(PIECEY, 0);
  EXPECT_EQ(NEXTCOLOR, 7);
  EXPECT_FALSE(GAMEOVER);
}

TEST_F(LockingTest, AfterATipTheNextPieceComesInAgainstTheNewWidth) {
  pull_over_the_threshold();
  lock_square();
  EXPECT_EQ(PIECEX, 5);
}

TEST_F(LockingTest, ANewPieceWithoutRoomEndsTheGameWithItsSound) {
  put(1, 4);
  lock_square();
  EXPECT_TRUE(GAMEOVER);
  EXPECT_TRUE(same({host().trace.end() - 3, host().trace.end()},
                   {"RND i1", "RND i1", R"(SOUND.PLAY i5 "c1")"}));
}

TEST_F(LockingTest, ABlockBesideTheNewPieceDoesNotEndTheGame) {
  put(0, 3); // above the left arm of the new piece
  lock_square();
  EXPECT_FALSE(GAMEOVER);
  EXPECT_EQ(only("SOUND.PLAY", drawn()).size(), 1U);
}

TEST_F(LockingTest, WithoutEffectsALockIsSilent) {
  SFXON = 0;
  put(1, 4);
  lock_square_that_clears();
  EXPECT_TRUE(only("SOUND.PLAY", new_trace()).empty());
}

// ---- failures -----------------------------------------------------------------------------------

TEST_F(LockingTest, AfterAFailedStepNoLaterOneRuns) {
  host().fail_name = "SOUND.PLAY";
  lock_square();
  EXPECT_EQ(take_error(), "SOUND.PLAY: failed on command");
  EXPECT_EQ(blocks_on_board(), 4);
  EXPECT_EQ(SCORE, 0);
  EXPECT_EQ(PIECECOLOR, 4) << "the next piece has not come in";
  EXPECT_TRUE(particles().empty());
}

TEST_F(LockingTest, WhicheverCommandFailsTheSequenceStopsThere) {
  const auto commands = fail_each_command(
      [] {
        arrange_busy_lock();
        COMBO = 1;
        host().chance.assign(400, 0.1); // a star too
      },
      [] { run(LOCKSEQUENCE()); });
  EXPECT_GT(commands, 300);
}

} // namespace
} // namespace kavo::test
