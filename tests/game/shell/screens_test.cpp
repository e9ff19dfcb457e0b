// One frame of the program on each of its screens.
#include <filesystem>

#include "game/playfield/new_game.h"
#include "game/presentation/entry.h"
#include "game/presentation/frame.h"
#include "game/presentation/options.h"
#include "game/presentation/title.h"
#include "game/program.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class ScreensTest : public GameTest {
protected:
  // One frame with exactly these keys held.
  static void frame(std::set<std::string> keys = {}) {
    host().keys = std::move(keys);
    run(run_frame());
  }

  // A game in progress: an O falls in the middle of an empty board, far from its next step.
  static void play() {
    host().chance = {0.5, 0.5, 0.5, 0.5};
    run(RESETGAME());
    enter_state("play");
    new_trace();
  }

  static void wait(double milliseconds) { clock().now_ms += milliseconds; }

  // What the last frame sent after it had polled the keys.
  static Trace after_the_keys() {
    Trace trace = drawn();
    std::erase_if(trace, [](std::string_view line) { return line.starts_with("GFX.KEYSTATE"); });
    return trace;
  }

  // What `draw` sends at this moment of the clock; the state is drawn once more by the frame.
  template<typename Draw>
  static Trace drawing_of(Draw draw) {
    new_trace();
    run(draw());
    return drawn();
  }
};

// ---- the frame
// -----------------------------------------------------------------------------------

TEST_F(ScreensTest, AFrameIsBracketedAndPausesSixteenMilliseconds) {
  frame();
  EXPECT_EQ(host().frames, 1);
  EXPECT_EQ(host().open_frames, 0);
  EXPECT_EQ(clock().slept_ms, 16);
}

TEST_F(ScreensTest, TheClockIsReadAtTheStartOfTheFrame) {
  clock().now_ms = 1000;
  clock().step_ms = 1;
  frame();
  EXPECT_EQ(NOW, 1000);
}

TEST_F(ScreensTest, TheKeysArePolledBeforeAnythingIsDrawn) {
  frame();
  const Trace trace = drawn();
  ASSERT_GT(trace.size(), 15);
  EXPECT_EQ(trace[13], R"(GFX.KEYSTATE "Escape")");
  EXPECT_EQ(trace[14], "CLS");
}

TEST_F(ScreensTest, TheKeysOfAFrameAreThePreviousOnesOfTheNext) {
  frame({"Left", "Return"});
  EXPECT_EQ(PL, 1);
  EXPECT_EQ(PENTER, 1);
  EXPECT_EQ(PR, 0);
}

TEST_F(ScreensTest, AnUnknownStateDrawsNothing) {
  enter_state("elsewhere");
  frame({"Space", "Escape"});
  EXPECT_TRUE(same(after_the_keys(), {}));
  EXPECT_FALSE(QUITFLAG);
}

TEST_F(ScreensTest, AFailedFrameDoesNotRememberItsKeys) {
  host().fail_name = "SCREENFLIP";
  frame({"Space"});
  EXPECT_EQ(take_error(), "SCREENFLIP: failed on command");
  EXPECT_EQ(PSPACE, 0);
  EXPECT_EQ(clock().slept_ms, 0);
}

// ---- music key
// -----------------------------------------------------------------------------------

TEST_F(ScreensTest, TheMusicKeyWorksInEveryState) {
  for (const char* state : {"title", "options", "enter", "pause", "play", "elsewhere"}) {
    start_afresh();
    play();
    enter_state(state);
    frame({"M"});
    EXPECT_EQ(MUSICON, 0) << state;
    EXPECT_TRUE(same(host().sent("SOUND.GAIN"), {"SOUND.GAIN i0 f0", "SOUND.GAIN i1 f0"}));
    new_trace();
    frame({"M"});
    EXPECT_EQ(MUSICON, 0) << state << ": held, not pressed again";
    frame();
    frame({"M"});
    EXPECT_EQ(MUSICON, 1) << state;
    EXPECT_TRUE(same(host().sent("SOUND.GAIN"), {"SOUND.GAIN i0 f0.55", "SOUND.GAIN i1 f0.6"}));
    EXPECT_TRUE(state_is(state));
  }
}

TEST_F(ScreensTest, TheMusicKeyActsBeforeTheScreen) {
  frame({"M"});
  const Trace trace = after_the_keys();
  EXPECT_EQ(trace[0], "SOUND.GAIN 0 0");
  EXPECT_EQ(trace[1], "SOUND.GAIN 1 0");
  EXPECT_EQ(trace[2], "CLS");
}

TEST_F(ScreensTest, TheMusicKeyAndTheOptionsActOnTheSameSwitch) {
  enter_state("options");
  frame({"M"});
  frame({"Return"});
  EXPECT_EQ(MUSICON, 1);
  frame({"M", "Return"});
  EXPECT_EQ(MUSICON, 0) << "Return was held, M pressed";
}

// ---- title
// ---------------------------------------------------------------------------------------

TEST_F(ScreensTest, ATitleFrameDrawsTheTitleAndPresentsIt) {
  Trace expected = drawing_of(DRAWTITLE);
  expected.push_back("SCREENFLIP");
  frame();
  EXPECT_TRUE(same(after_the_keys(), expected));
  EXPECT_TRUE(state_is("title"));
}

TEST_F(ScreensTest, SpaceOnTheTitleStartsANewGameAndStillDrawsTheTitle) {
  SCORE = 4711;
  set_board_size(10, 15);
  const Trace title = drawing_of(DRAWTITLE);
  frame({"Space"});
  EXPECT_TRUE(state_is("play"));
  EXPECT_EQ(SCORE, 0);
  EXPECT_EQ(ROWS, 15);
  EXPECT_TRUE(same(after_the_keys(),
                   joined({{"RESHAPE [0] [15,10]"}, Trace(4, "RND 1"), title, {"SCREENFLIP"}})));
}

TEST_F(ScreensTest, OpeningTheOptionsAlwaysSelectsTheMusicRow) {
  OPTSEL = 1;
  frame({"O"});
  EXPECT_TRUE(state_is("options"));
  EXPECT_EQ(OPTSEL, 0);
}

TEST_F(ScreensTest, EscapeOnTheTitleEndsTheProgramAfterDrawingThatFrame) {
  Trace expected = drawing_of(DRAWTITLE);
  expected.push_back("SCREENFLIP");
  frame({"Escape"});
  EXPECT_TRUE(QUITFLAG);
  EXPECT_TRUE(same(after_the_keys(), expected));
  EXPECT_EQ(clock().slept_ms, 16);
}

TEST_F(ScreensTest, OnTheTitleSpaceComesBeforeOAndOBeforeEscape) {
  frame({"O", "Escape"});
  EXPECT_TRUE(state_is("options"));
  EXPECT_FALSE(QUITFLAG);
  enter_state("title");
  frame();
  frame({"Space", "O", "Escape"});
  EXPECT_TRUE(state_is("play"));
  EXPECT_FALSE(QUITFLAG);
}

TEST_F(ScreensTest, AHeldEscapeDoesNotEndTheProgramFromTheTitle) {
  enter_state("options");
  frame({"Escape"});
  EXPECT_TRUE(state_is("title"));
  frame({"Escape"});
  EXPECT_FALSE(QUITFLAG);
}

// ---- options and name entry
// ----------------------------------------------------------------------

TEST_F(ScreensTest, AnOptionsFrameUpdatesDrawsAndPresents) {
  enter_state("options");
  OPTSEL = 1;
  Trace expected = drawing_of(DRAWOPTIONS);
  expected.push_back("SCREENFLIP");
  OPTSEL = 0;
  frame({"Down"});
  EXPECT_TRUE(same(after_the_keys(), expected));
}

TEST_F(ScreensTest, OptionsListenToUpDownReturnAndEscape) {
  enter_state("options");
  frame({"Up"});
  EXPECT_EQ(OPTSEL, 1);
  frame({"Return"});
  EXPECT_EQ(SFXON, 0);
  frame({"Space", "Left", "P", "O"});
  EXPECT_EQ(OPTSEL, 1);
  EXPECT_TRUE(state_is("options"));
  frame({"Escape"});
  EXPECT_TRUE(state_is("title"));
}

TEST_F(ScreensTest, AnEntryFrameUpdatesDrawsAndPresents) {
  enter_state("enter");
  ENTERNAME = numbers({1, 0, 0});
  Trace expected = drawing_of(DRAWENTER);
  expected.push_back("SCREENFLIP");
  ENTERNAME = numbers({0, 0, 0});
  frame({"W"});
  EXPECT_TRUE(same(after_the_keys(), expected));
}

TEST_F(ScreensTest, TheEntryListensToTheArrowsAndReturn) {
  const WorkingFolder folder;
  std::filesystem::create_directory("tmp");
  enter_state("enter");
  ENTERRANK = 2;
  SCORE = 77;
  frame({"Right"});
  frame({"Down"});
  frame({"Left"});
  frame({"Up"});
  frame({"Return"});
  EXPECT_EQ(name_at(2), "B A");
  EXPECT_EQ(score_at(2), 77);
  EXPECT_TRUE(state_is("title"));
}

TEST_F(ScreensTest, EscapeDoesNothingInTheEntry) {
  enter_state("enter");
  frame({"Escape", "Space", "P", "O"});
  EXPECT_TRUE(state_is("enter"));
  EXPECT_FALSE(QUITFLAG);
}

// ---- pause
// ---------------------------------------------------------------------------------------

TEST_F(ScreensTest, PAndEscapePauseTheGameAndNothingMovesInThatFrame) {
  for (const char* key : {"P", "Escape"}) {
    start_afresh();
    play();
    wait(5000);
    frame({key, "Left", "Up", "Space", "Down"});
    EXPECT_TRUE(state_is("pause")) << key;
    EXPECT_EQ(PIECEX, 3);
    EXPECT_EQ(PIECEY, 0);
    EXPECT_FALSE(QUITFLAG);
    EXPECT_TRUE(contains(drawn(), R"(TEXT 282 338 "PAUSE")")) << key;
  }
}

TEST_F(ScreensTest, APausedFrameDrawsThePlayingScreenWithThePauseBox) {
  play();
  enter_state("pause");
  const Trace expected = drawing_of(DRAW);
  frame();
  EXPECT_TRUE(same(after_the_keys(), expected));
  EXPECT_TRUE(contains(expected, R"(TEXT 282 338 "PAUSE")"));
  EXPECT_EQ(only("SCREENFLIP", expected).size(), 1);
}

TEST_F(ScreensTest, PAndSpaceResumeTheGameWithoutMovingAPiece) {
  for (const char* key : {"P", "Space"}) {
    start_afresh();
    play();
    enter_state("pause");
    wait(5000);
    frame({key});
    EXPECT_TRUE(state_is("play")) << key;
    EXPECT_EQ(PIECEY, 0);
    EXPECT_EQ(blocks_on_board(), 0);
    EXPECT_FALSE(contains(drawn(), R"(TEXT 282 338 "PAUSE")")) << key;
  }
}

TEST_F(ScreensTest, EscapeLeavesThePausedGameForTheTitleWithoutAHighScore) {
  play();
  SCORE = 99999;
  enter_state("pause");
  frame({"Escape"});
  EXPECT_TRUE(state_is("title"));
  EXPECT_EQ(ENTERRANK, -1);
  EXPECT_EQ(SCORE, 99999) << "the next game resets it";
}

TEST_F(ScreensTest, InThePauseEscapeWinsOverResuming) {
  for (const char* key : {"P", "Space"}) {
    start_afresh();
    enter_state("pause");
    frame({key, "Escape"});
    EXPECT_TRUE(state_is("title")) << key;
  }
}

TEST_F(ScreensTest, ThePieceDoesNotFallInThePause) {
  play();
  enter_state("pause");
  wait(60000);
  frame({"Down"});
  EXPECT_EQ(PIECEY, 0);
}

// ---- play: steering
// ------------------------------------------------------------------------------

TEST_F(ScreensTest, HoldingADirectionMovesThePieceOnlyOnce) {
  play();
  frame({"Right"});
  frame({"Right"});
  frame({"Right"});
  EXPECT_EQ(PIECEX, 4);
  frame();
  frame({"Right"});
  EXPECT_EQ(PIECEX, 5);
}

TEST_F(ScreensTest, HoldingLeftAndPressingAMovesNothingFurther) {
  play();
  frame({"Left"});
  frame({"Left", "A"});
  EXPECT_EQ(PIECEX, 2);
}

TEST_F(ScreensTest, HoldingAAloneMovesOnce) {
  play();
  frame({"A"});
  frame({"A"});
  EXPECT_EQ(PIECEX, 2);
}

TEST_F(ScreensTest, APieceStopsAtWallsAndBlocks) {
  play();
  hold(shape(o_piece), 4, -1, 0);
  frame({"Left"});
  EXPECT_EQ(PIECEX, -1);
  put(1, 2);
  frame();
  frame({"Right"});
  EXPECT_EQ(PIECEX, -1);
}

TEST_F(ScreensTest, LeftAndRightTogetherEndWhereTheyBegan) {
  play();
  frame({"Left", "Right"});
  EXPECT_EQ(PIECEX, 3);
}

TEST_F(ScreensTest, LeftIsTriedBeforeRight) {
  play();
  put(0, 3);
  frame({"Left", "Right"});
  EXPECT_EQ(PIECEX, 4) << "the block stopped the first step, not the second";
}

TEST_F(ScreensTest, ThePieceMovesBeforeItTurns) {
  play();
  hold(shape(i_piece), 1, 3, 5);
  put(7, 4); // stops a turn where the piece was
  frame({"Right", "Up"});
  EXPECT_EQ(PIECEX, 4);
  EXPECT_EQ(shape_text(CURRENTPIECE), ".#..\n.#..\n.#..\n.#..\n");
}

TEST_F(ScreensTest, UpTurnsOncePerPress) {
  play();
  hold(shape(t_piece), 6, 3, 5);
  frame({"W"});
  const std::string turned = shape_text(CURRENTPIECE);
  EXPECT_NE(turned, shape_text(shape(t_piece)));
  frame({"W"});
  EXPECT_EQ(shape_text(CURRENTPIECE), turned);
}

TEST_F(ScreensTest, APressInPlayIsFollowedByTheDrawnFrame) {
  play();
  frame({"Left"});
  const Trace moved = after_the_keys();
  clock().now_ms -= 16;
  EXPECT_TRUE(same(moved, drawing_of(DRAW)));
}

// ---- play: gravity
// -------------------------------------------------------------------------------

TEST_F(ScreensTest, AtLevelOneThePieceFallsEverySixHundredMilliseconds) {
  play();
  wait(599);
  frame();
  EXPECT_EQ(STEPEVERY, 600);
  EXPECT_EQ(PIECEY, 0);
  clock().now_ms = LASTDROP + 600;
  frame();
  EXPECT_EQ(PIECEY, 1);
}

TEST_F(ScreensTest, EveryLevelTakesFortyMilliseconds) {
  play();
  LEVEL = 10;
  frame();
  EXPECT_EQ(STEPEVERY, 240);
}

TEST_F(ScreensTest, FromLevelElevenOnTheIntervalStaysAtTwoHundred) {
  play();
  for (const int64_t level : {11, 12, 100}) {
    LEVEL = level;
    frame();
    EXPECT_EQ(STEPEVERY, 200) << level;
  }
}

TEST_F(ScreensTest, HoldingDownMakesItFortyFiveAtAnyLevel) {
  for (const int64_t level : {1, 11}) {
    start_afresh();
    play();
    LEVEL = level;
    frame({"Down"});
    EXPECT_EQ(STEPEVERY, 45);
    clock().now_ms = LASTDROP + 45;
    frame({"Down"});
    EXPECT_EQ(PIECEY, 1) << "held, not pressed anew";
    frame();
    EXPECT_EQ(STEPEVERY, level == 1 ? 600 : 200);
  }
}

TEST_F(ScreensTest, AtMostOneStepIsTakenInAFrame) {
  play();
  wait(60000);
  frame();
  EXPECT_EQ(PIECEY, 1);
  EXPECT_EQ(LASTDROP, NOW);
}

TEST_F(ScreensTest, ABlockedPieceLocksAndTheTimerRestarts) {
  play();
  PIECEY = 13;
  wait(600);
  frame();
  EXPECT_EQ(at(14, 4), 4);
  EXPECT_EQ(at(13, 5), 4);
  EXPECT_EQ(PIECEY, 0);
  EXPECT_EQ(LASTDROP, NOW);
}

TEST_F(ScreensTest, AHardDropGivesTheNextPieceAFullInterval) {
  play();
  wait(599);
  frame({"Space"});
  EXPECT_EQ(at(14, 4), 4);
  EXPECT_EQ(PIECEY, 0);
  EXPECT_EQ(LASTDROP, 599);
  clock().now_ms = 599 + 599;
  frame();
  EXPECT_EQ(PIECEY, 0);
  clock().now_ms = 599 + 600;
  frame();
  EXPECT_EQ(PIECEY, 1);
}

TEST_F(ScreensTest, TheTimerStartsAfterTheFlashOfAHardDrop) {
  play();
  fill_row(14);
  put(14, 4, 0);
  put(14, 5, 0);
  wait(100);
  frame({"Space"});
  EXPECT_EQ(NOW, 100);
  EXPECT_EQ(LASTDROP, 100 + 4 * 16);
}

TEST_F(ScreensTest, AHardDropIsNotFollowedByAStepInTheSameFrame) {
  play();
  wait(5000);
  frame({"Space"});
  EXPECT_EQ(PIECEY, 0);
}

TEST_F(ScreensTest, AStarIsCollectedWhereThePieceHasJustFallen) {
  play();
  qor_array_set(STAR_ON.get(), 0, 1);
  qor_array_set(STAR_R.get(), 0, 2);
  qor_array_set(STAR_C.get(), 0, 4);
  frame();
  EXPECT_EQ(qor_array_get(STAR_ON.get(), 0), 1);
  wait(600);
  frame();
  EXPECT_EQ(qor_array_get(STAR_ON.get(), 0), 0);
}

// ---- play: the end of a game
// ---------------------------------------------------------------------

TEST_F(ScreensTest, AGameOverWithARankGoesToTheEntry) {
  play();
  ENTERNAME = numbers({5, 6, 7});
  ENTERPOS = 2;
  SCORE = 300;
  qor_array_set(HS_SCORE.get(), 0, 500);
  GAMEOVER = true;
  frame();
  EXPECT_TRUE(state_is("enter"));
  EXPECT_EQ(ENTERRANK, 1);
  EXPECT_EQ(ENTERPOS, 0);
  for (int64_t position = 0; position < 3; ++position)
    EXPECT_EQ(qor_array_get(ENTERNAME.get(), position), 0);
}

TEST_F(ScreensTest, AGameOverWithoutARankReturnsToTheTitle) {
  play();
  GAMEOVER = true;
  ENTERRANK = 3;
  frame();
  EXPECT_TRUE(state_is("title"));
  EXPECT_EQ(ENTERRANK, -1);
}

TEST_F(ScreensTest, TheFrameInWhichTheGameEndsIsDrawn) {
  play();
  fill_row(0);
  fill_row(1);
  put(0, 9, 0);
  put(1, 9, 0);
  hold(shape(o_piece), 4, 3, -2); // above the stack
  wait(600);
  frame();
  EXPECT_TRUE(GAMEOVER);
  const Trace trace = drawn();
  EXPECT_TRUE(contains(trace, R"(TEXT 250 350 "GAME OVER")"));
  EXPECT_EQ(trace.back(), "SCREENFLIP");
  EXPECT_TRUE(contains(trace, R"(SOUND.PLAY 5 "c1")"));
}

TEST_F(ScreensTest, EveryFrameStopsAtTheCommandThatFails) {
  for (const char* state : {"title", "options", "enter", "pause", "play"}) {
    const auto arrange = [state] {
      play();
      enter_state(state);
    };
    EXPECT_GT(fail_each_command(arrange, [] { run(run_frame()); }), 14) << state;
    EXPECT_EQ(host().open_frames, 0);
  }
}

} // namespace
} // namespace kavo::test
