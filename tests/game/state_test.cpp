// The game state as start-up leaves it, and a new game.
#include <array>

#include "game/playfield/new_game.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class StateTest : public GameTest {
protected:
  static void SpoilTheGame();
};

void StateTest::SpoilTheGame() {
  set_board_size(10, 15);
  fill_row(9, 3);
  SCORE = 4711;
  LINESCLEARED = 23;
  LEVEL = 3;
  GAMEOVER = true;
  COMBO = CLEAREDTURN = COMBOFLASH = SHOCKLIFE = REARMIN = LIGHTNING = 5;
  KAVOARMED = false;
  for (const Array* lives : {&PAR_LIFE, &STAR_ON, &POP_LIFE, &STR_LIFE})
    for (int64_t slot = 0; slot < qor_array_len(lives->get()); ++slot)
      qor_array_set(lives->get(), slot, 1);
}

bool is_all(const Array& pool, int64_t length, double value) {
  bool result = qor_array_len(pool.get()) == length;
  for (int64_t slot = 0; slot < length; ++slot)
    result = result && qor_array_get(pool.get(), slot) == value;
  return result;
}

TEST_F(StateTest, GeometryAndThresholdsAreTheDesigns) {
  EXPECT_EQ(ROWS, 15);
  EXPECT_EQ(COLS, 10);
  EXPECT_EQ(CELL, 36);
  EXPECT_EQ(AREA, 540);
  EXPECT_EQ(SCRW, 660);
  EXPECT_EQ(SCRH, 800);
  EXPECT_EQ(AX, 60);
  EXPECT_EQ(AY, 80);
  EXPECT_EQ(BX, 0);
  EXPECT_EQ(BY, 0);
  EXPECT_EQ(KAVO_HIGH, 40);
  EXPECT_EQ(KAVO_LOW, 18);
  EXPECT_TRUE(KAVOARMED);
}

TEST_F(StateTest, BoardAndPiecesStartEmpty) {
  EXPECT_EQ(qor_array_len(BOARD.get()), 15);
  EXPECT_EQ(blocks_on_board(), 0);
  EXPECT_EQ(shape_text(CURRENTPIECE), "....\n....\n....\n....\n");
  EXPECT_EQ(shape_text(NEXTPIECE), "....\n....\n....\n....\n");
  EXPECT_EQ(qor_array_len(CURRENTPIECE.get()), 4);
  EXPECT_EQ(qor_array_len(NEXTPIECE.get()), 4);
  EXPECT_EQ(PIECEX, 0);
  EXPECT_EQ(PIECEY, 0);
  EXPECT_EQ(PIECECOLOR, 0);
  EXPECT_EQ(NEXTCOLOR, 0);
}

TEST_F(StateTest, RowsOfTheBoardAreIndependent) {
  put(3, 4);
  EXPECT_EQ(blocks_on_board(), 1);
}

TEST_F(StateTest, AGameStartsAtLevelOneWithoutPoints) {
  EXPECT_EQ(LEVEL, 1);
  for (const int64_t counter : {SCORE, LINESCLEARED, REARMIN, COMBO, CLEAREDTURN, COMBOFLASH,
                                COMBOSHOW, PUKIND, PUBR, PUBC, TMP, GAIN, PTS, CBONUS, CLEARED})
    EXPECT_EQ(counter, 0);
  EXPECT_FALSE(GAMEOVER);
  EXPECT_EQ(LASTDROP, 0);
  EXPECT_EQ(as_number(CELLV), 0);
  EXPECT_EQ(as_number(V), 0);
}

TEST_F(StateTest, EffectPoolsHaveTheirSizesAndAreEmpty) {
  for (const Array* pool : {&POP_X, &POP_Y, &POP_LIFE, &POP_VAL})
    EXPECT_TRUE(is_all(*pool, 16, 0));
  for (const Array* pool : {&STAR_R, &STAR_C, &STAR_ON})
    EXPECT_TRUE(is_all(*pool, 6, 0));
  for (const Array* pool : {&PAR_X, &PAR_Y, &PAR_VX, &PAR_VY, &PAR_LIFE, &PAR_R, &PAR_G, &PAR_B})
    EXPECT_TRUE(is_all(*pool, 140, 0));
  for (const Array* pool : {&STR_X, &STR_Y0, &STR_Y1, &STR_LIFE})
    EXPECT_TRUE(is_all(*pool, 8, 0));
  for (const Array* pool : {&BGSTAR_X, &BGSTAR_Y})
    EXPECT_TRUE(is_all(*pool, 40, 0));
}

TEST_F(StateTest, EffectTimersStartAtZero) {
  for (const int64_t timer : {SHAKE, FLASH, SHOCKLIFE, LIGHTNING, BOLTX})
    EXPECT_EQ(timer, 0);
  EXPECT_EQ(SHOCKX, 0);
  EXPECT_EQ(SHOCKY, 0);
}

TEST_F(StateTest, ShellStartsOnTheTitleWithSoundOn) {
  EXPECT_TRUE(state_is("title"));
  EXPECT_EQ(MUSICON, 1);
  EXPECT_EQ(SFXON, 1);
  EXPECT_EQ(OPTSEL, 0);
  EXPECT_FALSE(QUITFLAG);
  EXPECT_STREQ(chars(TESTTAB$), "");
}

TEST_F(StateTest, NameEntryStartsAtTheFirstOfThreeLetters) {
  EXPECT_TRUE(is_all(ENTERNAME, 3, 0));
  EXPECT_EQ(ENTERPOS, 0);
}

TEST_F(StateTest, RankIsMinusOneUntilAGameEnds) {
  EXPECT_EQ(ENTERRANK, -1);
  run(RESETGAME());
  EXPECT_EQ(ENTERRANK, -1);
}

TEST_F(StateTest, NoKeyWasHeldBeforeTheFirstFrame) {
  for (const double key : {PL, PR, PU, PDN, PSPACE, PENTER, PP, PO, PMK, PESC})
    EXPECT_EQ(key, 0);
}

TEST_F(StateTest, ANewGameBringsBackTheUprightBoardWhateverChangedIt) {
  set_board_size(10, 15);
  fill_row(9);
  run(RESETGAME());
  EXPECT_EQ(ROWS, 15);
  EXPECT_EQ(COLS, 10);
  EXPECT_EQ(qor_array_len(BOARD.get()), 15);
  EXPECT_EQ(blocks_on_board(), 0);
  put(0, 9, 4);
  EXPECT_EQ(at(0, 9), 4);
  EXPECT_EQ(blocks_on_board(), 1);
}

TEST_F(StateTest, ANewGameAsksForAFreshBoardAndTwoPieces) {
  run(RESETGAME());
  const Trace trace = new_trace();
  ASSERT_GE(trace.size(), 5);
  EXPECT_EQ(trace[0], "RESHAPE [0] [15,10]");
  EXPECT_TRUE(same({trace.begin() + 1, trace.end()}, Trace(4, "RND i1")));
}

TEST_F(StateTest, ANewGameClearsPointsTimersAndLives) {
  SpoilTheGame();
  run(RESETGAME());
  EXPECT_EQ(LEVEL, 1);
  for (const int64_t counter :
       {SCORE, LINESCLEARED, COMBO, CLEAREDTURN, COMBOFLASH, SHOCKLIFE, REARMIN, LIGHTNING})
    EXPECT_EQ(counter, 0);
  EXPECT_FALSE(GAMEOVER);
  EXPECT_TRUE(KAVOARMED);
  EXPECT_TRUE(is_all(PAR_LIFE, 140, 0));
  EXPECT_TRUE(is_all(STAR_ON, 6, 0));
  EXPECT_TRUE(is_all(POP_LIFE, 16, 0));
  EXPECT_TRUE(is_all(STR_LIFE, 8, 0));
}

TEST_F(StateTest, ANewGameHasAFallingPieceAndAPreview) {
  host().chance = {0.5, 0.0, 0.5, 0.5}; // an I, then an O
  run(RESETGAME());
  EXPECT_EQ(shape_text(CURRENTPIECE), "....\n####\n....\n....\n");
  EXPECT_EQ(PIECECOLOR, 1);
  EXPECT_EQ(shape_text(NEXTPIECE), ".##.\n.##.\n....\n....\n");
  EXPECT_EQ(NEXTCOLOR, 4);
  EXPECT_EQ(PIECEX, 3);
  EXPECT_EQ(PIECEY, 0);
}

TEST_F(StateTest, ANewGameGivesTheFirstPieceAFullInterval) {
  clock().now_ms = 12345;
  run(RESETGAME());
  EXPECT_EQ(LASTDROP, 12345);
}

TEST_F(StateTest, ANewGameLeavesWhatOnlyFadesOutAndWhatOutlivesAGame) {
  SHAKE = 4;
  FLASH = 5;
  COMBOSHOW = 6;
  BOLTX = 7;
  MUSICON = SFXON = 0;
  qor_array_set(POP_X.get(), 0, 8);
  qor_array_set(PAR_Y.get(), 1, 9);
  qor_array_set(STR_Y0.get(), 2, 10);
  qor_array_set(BGSTAR_X.get(), 3, 11);
  qor_array_set(HS_SCORE.get(), 0, 1200);
  put_text(HS_NAME.get(), 0, "JON");
  run(RESETGAME());
  EXPECT_EQ(SHAKE, 4);
  EXPECT_EQ(FLASH, 5);
  EXPECT_EQ(COMBOSHOW, 6);
  EXPECT_EQ(BOLTX, 7);
  EXPECT_EQ(MUSICON, 0);
  EXPECT_EQ(SFXON, 0);
  EXPECT_EQ(qor_array_get(POP_X.get(), 0), 8);
  EXPECT_EQ(qor_array_get(PAR_Y.get(), 1), 9);
  EXPECT_EQ(qor_array_get(STR_Y0.get(), 2), 10);
  EXPECT_EQ(qor_array_get(BGSTAR_X.get(), 3), 11);
  EXPECT_EQ(score_at(0), 1200);
  EXPECT_EQ(name_at(0), "JON");
}

TEST_F(StateTest, ANewGameStopsAtTheCommandThatFails) {
  EXPECT_EQ(fail_each_command([] {}, [] { run(RESETGAME()); }), 5);
}

TEST_F(StateTest, AFailedResetKeepsThePointsOfTheOldGame) {
  SCORE = 99;
  host().fail_name = "RESHAPE";
  run(RESETGAME());
  EXPECT_EQ(take_error(), "RESHAPE: failed on command");
  EXPECT_EQ(SCORE, 99);
}

} // namespace
} // namespace kavo::test
