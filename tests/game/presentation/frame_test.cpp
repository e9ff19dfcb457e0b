// One whole frame of the playing screen, step by step.
#include <algorithm>
#include <cmath>

#include "game/presentation/cells.h"
#include "game/presentation/effects.h"
#include "game/presentation/frame.h"
#include "game/presentation/sky.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

constexpr size_t sky_commands = 142;
constexpr size_t after_sky = 3 + sky_commands;
constexpr size_t horizon_lines = 112; // four of 28 steps
constexpr size_t after_horizon = after_sky + 1 + horizon_lines;

class FrameTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    arrange();
  }

  // An empty board; an O falls, a T comes next.
  static void arrange() {
    hold(shape(o_piece), 4, 3, 0);
    NEXTPIECE = shape(t_piece);
    NEXTCOLOR = 6;
  }

  static Trace frame() {
    new_trace();
    run(DRAW());
    return drawn();
  }

  template<typename Draw>
  static Trace drawing_of(Draw draw) {
    new_trace();
    draw();
    return drawn();
  }
};

Trace part(const Trace& trace, size_t first, size_t count) {
  const auto begin = trace.begin() + static_cast<ptrdiff_t>(first);
  return {begin, begin + static_cast<ptrdiff_t>(count)};
}

// The lines from the one that equals `first` up to the one before `end`.
Trace between(const Trace& trace, std::string_view first, std::string_view end) {
  const auto begin = std::ranges::find(trace, first);
  return {begin, std::find(begin, trace.end(), end)};
}

// The horizon at a moment of the clock with this lean.
Trace horizon(double tick, double lean) {
  Trace lines;
  for (int k = 0; k < 4; ++k)
    for (int left = 0; left <= 659; left += 24) {
      const double x = left;
      const double wobble = std::trunc(std::sin(tick / 260 + x / 70 + k) * 5);
      const double slope = std::trunc(lean * (x - 330) / 330);
      const double y = 130 + 175 * k + wobble + slope;
      lines.push_back(command_line("LINE", {x, y, x + 24, y}));
    }
  return lines;
}

Trace empty_cells() {
  Trace lines;
  for (int row = 0; row < ROWS; ++row)
    for (int column = 0; column < COLS; ++column) {
      lines.emplace_back("DRAWCOLOR 28 40 56");
      lines.push_back(command_line("RECT", {BX + 36 * column + 1, BY + 36 * row + 1, 34, 34, 1}));
    }
  return lines;
}

const Trace hud_above = {
    "DRAWCOLOR 235 235 245", R"(TEXT 60 28 "KAVO - Schlagseite")",
    "DRAWCOLOR 200 210 160", R"(TEXT 450 28 "Best: 0")",
    "DRAWCOLOR 150 165 180", R"(TEXT 60 52 "Pfeile/WASD  Space=Drop  M=Musik  ESC=Ende")",
};

const Trace hud_below = {
    "DRAWCOLOR 180 195 210",      R"(TEXT 60 642 "Score:  0")",    R"(TEXT 60 664 "Reihen: 0")",
    R"(TEXT 60 686 "Level:  1")", "DRAWCOLOR 150 165 180",         R"(TEXT 534 626 "Naechste")",
    "DRAWCOLOR 200 110 210",      "RECT 551 644 11 11 1",          "DRAWCOLOR 200 110 210",
    "RECT 538 657 11 11 1",       "DRAWCOLOR 200 110 210",         "RECT 551 657 11 11 1",
    "DRAWCOLOR 200 110 210",      "RECT 564 657 11 11 1",          "DRAWCOLOR 50 62 78",
    "RECT 200 716 260 12 1",      "DRAWCOLOR 150 70 70",           "RECT 250 712 3 20 1",
    "RECT 410 712 3 20 1",        "DRAWCOLOR 240 225 120",         "RECT 327 710 6 24 1",
    "DRAWCOLOR 150 165 180",      R"(TEXT 290 690 "Schlagseite")",
};

// ---- the whole frame
// -----------------------------------------------------------------------------

TEST_F(FrameTest, AnUprightFrameIsDrawnInOrder) {
  const Trace sky = drawing_of([] { run(DRAWSKY()); });
  const Trace trace = frame();
  const Trace piece = drawing_of([] {
    for (const auto& [row, column] : {std::pair(0, 4), {0, 5}, {1, 4}, {1, 5}})
      run(DRAWCELL(row, column, 4));
  });
  EXPECT_TRUE(same(trace, joined({
                              {"CLS", "DRAWCOLOR 12 26 44", "RECT 0 0 660 800 1"},
                              sky,
                              {"DRAWCOLOR 18 36 58"},
                              horizon(0, 0),
                              {"DRAWCOLOR 70 52 34", "RECT 142 72 376 556 1"},
                              empty_cells(),
                              {
                                  "DRAWCOLOR 70 84 100",
                                  "RECT 298 552 28 28 0",
                                  "DRAWCOLOR 70 84 100",
                                  "RECT 334 552 28 28 0",
                                  "DRAWCOLOR 70 84 100",
                                  "RECT 298 588 28 28 0",
                                  "DRAWCOLOR 70 84 100",
                                  "RECT 334 588 28 28 0",
                              },
                              piece,
                              hud_above,
                              hud_below,
                              {"SCREENFLIP"},
                          })));
  EXPECT_EQ(BX, 150);
  EXPECT_EQ(BY, 80);
}

TEST_F(FrameTest, AfterTheBoardTipsTheWellIsWideAndCentred) {
  set_board_size(10, 15);
  PIECEX = 5;
  const Trace trace = frame();
  EXPECT_EQ(BX, 60);
  EXPECT_EQ(BY, 170);
  EXPECT_EQ(trace[after_horizon + 1], "RECT 52 162 556 376 1");
  EXPECT_TRUE(same(part(trace, after_horizon + 2, 300), empty_cells()));
  EXPECT_EQ(trace[after_horizon + 303], "RECT 280 462 28 28 0"); // the ghost on the new floor
}

TEST_F(FrameTest, APausedFrameIsCompleteWithTheBoxOnTop) {
  const Trace playing = frame();
  enter_state("pause");
  EXPECT_TRUE(same(frame(), joined({part(playing, 0, playing.size() - 1),
                                    {
                                        "DRAWCOLOR 20 24 34",
                                        "RECT 220 310 220 80 1",
                                        "DRAWCOLOR 250 230 120",
                                        R"(TEXT 282 338 "PAUSE")",
                                        "DRAWCOLOR 180 195 210",
                                        R"(TEXT 238 364 "P = weiter   ESC = Titel")",
                                        "SCREENFLIP",
                                    }})));
}

TEST_F(FrameTest, EffectsGoOnInThePause) {
  enter_state("pause");
  run(ADDPOPUP(100, 200, 50));
  frame();
  EXPECT_EQ(qor_array_get(POP_LIFE.get(), 0), 54);
}

TEST_F(FrameTest, AfterTheGameNeitherGhostNorPieceIsDrawnButTheRestIs) {
  GAMEOVER = true;
  put(14, 0, 3);
  run(ADDPOPUP(100, 200, 50));
  const Trace trace = frame();
  EXPECT_FALSE(contains(trace, "DRAWCOLOR 70 84 100"));
  EXPECT_FALSE(contains(trace, "DRAWCOLOR 235 205 70")) << "the falling piece's colour";
  EXPECT_TRUE(contains(trace, "DRAWCOLOR 235 150 60")) << "the block on the board";
  EXPECT_TRUE(contains(trace, R"(TEXT 60 642 "Score:  0")"));
  EXPECT_TRUE(contains(trace, R"(TEXT 100 198 "+50")"));
  EXPECT_TRUE(same(part(trace, trace.size() - 3, 3),
                   {"DRAWCOLOR 240 90 90", R"(TEXT 250 350 "GAME OVER")", "SCREENFLIP"}));
}

TEST_F(FrameTest, GameOverComesBeforeThePauseBox) {
  GAMEOVER = true;
  enter_state("pause");
  const Trace trace = frame();
  EXPECT_TRUE(same(part(trace, trace.size() - 9, 3),
                   {"DRAWCOLOR 240 90 90", R"(TEXT 250 350 "GAME OVER")", "DRAWCOLOR 20 24 34"}));
}

TEST_F(FrameTest, EveryLineIsSentAsFourDoublesAndTheBackgroundAsFiveIntegers) {
  fill_row(2);
  LIGHTNING = 3;
  run(DRAW());
  for (const std::string& line : host().sent("LINE"))
    EXPECT_EQ(std::ranges::count(line, 'f'), 4) << line;
  EXPECT_TRUE(contains(host().trace, "RECT i0 i0 i660 i800 i1"));
}

TEST_F(FrameTest, AFrameStopsAtTheCommandThatFailsAndIsNotPresented) {
  const auto busy = [] {
    arrange();
    fill_row(2, 9);
    put(2, 0, 0);
    qor_array_set(STAR_ON.get(), 0, 1);
    GAMEOVER = KAVOARMED = false;
    SHAKE = FLASH = COMBOFLASH = SHOCKLIFE = 4;
    LIGHTNING = 3;
    run(ADDPOPUP(1, 2, 300));
    run(ADDPART(1, 2, 3, 4, 5, 6, 7, 8));
    run(ADDSTREAK(1, 2, 3));
    enter_state("pause");
  };
  EXPECT_GT(fail_each_command(busy, [] { run(DRAW()); }), 700);
}

TEST_F(FrameTest, CountersBehindAFailureAreNotCountedDown) {
  SHAKE = FLASH = COMBOFLASH = 4;
  host().fail_name = "TEXT";
  run(DRAW());
  EXPECT_EQ(take_error(), "TEXT: failed on command");
  EXPECT_EQ(SHAKE, 3) << "counted before the first text";
  EXPECT_EQ(FLASH, 4);
  EXPECT_EQ(COMBOFLASH, 4);
  EXPECT_EQ(host().count("SCREENFLIP"), 0);
}

using FrameDeathTest = FrameTest;

TEST_F(FrameDeathTest, ABoardWithoutRowsEndsTheProgram) {
  set_board_size(0, 10);
  EXPECT_EXIT(run(DRAW()), ::testing::ExitedWithCode(1),
              "^Unhandled exception: Division by zero\n$");
}

// ---- danger
// --------------------------------------------------------------------------------------

TEST_F(FrameTest, AnEmptyWellIsCalm) {
  const Trace trace = frame();
  EXPECT_EQ(trace[1], "DRAWCOLOR 12 26 44");
  EXPECT_EQ(trace[after_horizon], "DRAWCOLOR 70 52 34");
  EXPECT_FALSE(contains(trace, "DRAWCOLOR 120 140 180"));
  EXPECT_EQ(host().draws, 0);
}

TEST_F(FrameTest, AFullWellIsRed) {
  put(0, 9);
  const Trace trace = frame();
  EXPECT_EQ(trace[1], "DRAWCOLOR 72 12 22");
  EXPECT_EQ(trace[after_sky], "DRAWCOLOR 44 28 40");
}

TEST_F(FrameTest, TheBackgroundReddensWithTheHighestBlock) {
  put(9, 4);
  put(12, 4);
  const double danger = 6.0 / 15;
  EXPECT_EQ(frame()[1],
            command_line("DRAWCOLOR", {std::trunc(60 * danger + 12), std::trunc(26 - 14 * danger),
                                       std::trunc(44 - 22 * danger)}));
}

TEST_F(FrameTest, ABlockInRowThreeBringsPulseRainAndTheChanceOfLightning) {
  put(3, 5);
  clock().now_ms = 100;
  const Trace trace = frame();
  const double pulse = (std::sin(100.0 / 110) + 1) * 0.5;
  EXPECT_EQ(trace[after_horizon],
            command_line("DRAWCOLOR", {std::trunc(170 * pulse + 70), std::trunc(52 - 20 * pulse),
                                       std::trunc(34 - 10 * pulse)}));
  EXPECT_TRUE(contains(trace, "DRAWCOLOR 120 140 180"));
  EXPECT_EQ(host().draws, 1);
}

TEST_F(FrameTest, ABlockOnlyInRowFourDoesNot) {
  put(4, 5);
  const Trace trace = frame();
  EXPECT_EQ(trace[after_horizon], "DRAWCOLOR 70 52 34");
  EXPECT_FALSE(contains(trace, "DRAWCOLOR 120 140 180"));
  EXPECT_EQ(host().draws, 0);
}

TEST_F(FrameTest, ABoltThatHasStartedIsDrawnToItsEndWithoutDanger) {
  LIGHTNING = 2;
  EXPECT_TRUE(contains(frame(), "DRAWCOLOR 235 240 255"));
  EXPECT_TRUE(contains(frame(), "DRAWCOLOR 235 240 255"));
  EXPECT_FALSE(contains(frame(), "DRAWCOLOR 235 240 255"));
  EXPECT_EQ(host().draws, 12) << "bends only, no new bolt";
}

TEST_F(FrameTest, ABoltStartedByChanceIsDrawnInTheSameFrame) {
  put(0, 0);
  host().chance = {0.01, 0.5};
  const Trace trace = frame();
  EXPECT_TRUE(contains(trace, "DRAWCOLOR 235 240 255"));
  EXPECT_EQ(LIGHTNING, 2);
  EXPECT_EQ(BOLTX, 330);
}

TEST_F(FrameTest, TheClockIsReadAsOftenAsTheMovingThingsNeedIt) {
  clock().step_ms = 1;
  frame();
  EXPECT_EQ(clock().now_ms, 42 + 1) << "sky, horizon";
  clock().now_ms = 0;
  put(0, 0);
  frame();
  EXPECT_EQ(clock().now_ms, 42 + 1 + 1 + 50) << "pulse and rain as well";
}

// ---- lean
// ----------------------------------------------------------------------------------------

TEST_F(FrameTest, TheHorizonLeansWithThePull) {
  for (const int64_t row : {10, 11, 12, 13})
    put(row, 9); // 4 times 4.5
  clock().now_ms = 777;
  const Trace trace = frame();
  EXPECT_TRUE(same(part(trace, after_sky + 1, horizon_lines), horizon(777, 18 * 0.7)));
}

TEST_F(FrameTest, ALeanOfAHundredStopsNeedleAndHorizon) {
  for (int64_t row = 0; row < 15; ++row) {
    put(row, 9, 11);
    put(row, 8);
  }
  const Trace right = frame();
  EXPECT_TRUE(same(part(right, after_sky + 1, horizon_lines), horizon(0, 70)));
  EXPECT_TRUE(contains(right, "RECT 457 710 6 24 1"));
  set_board_size(15, 10);
  for (int64_t row = 0; row < 15; ++row) {
    put(row, 0, 11);
    put(row, 1);
  }
  const Trace left = frame();
  EXPECT_TRUE(same(part(left, after_sky + 1, horizon_lines), horizon(0, -70)));
  EXPECT_TRUE(contains(left, "RECT 197 710 6 24 1"));
}

TEST_F(FrameTest, TheNeedleTakesTwoPixelsPerUnitOfPull) {
  put(14, 9);
  EXPECT_TRUE(contains(frame(), "RECT 336 710 6 24 1"));
}

TEST_F(FrameTest, AtTheThresholdTheNeedlesCentreReachesTheMark) {
  for (int64_t row = 7; row < 15; ++row)
    put(row, 9); // 8 times 4.5
  put(14, 8);    // and 3.5
  put(14, 5);    // and 0.5
  const Trace trace = frame();
  EXPECT_TRUE(contains(trace, "RECT 410 712 3 20 1"));
  EXPECT_TRUE(contains(trace, "RECT 407 710 6 24 1"));
}

TEST_F(FrameTest, WhileTheLeanRestsTheNeedleIsGreyAndTheCountdownShown) {
  KAVOARMED = false;
  REARMIN = 3;
  const Trace trace = frame();
  EXPECT_TRUE(same(between(trace, "DRAWCOLOR 120 130 145", "SCREENFLIP"),
                   {
                       "DRAWCOLOR 120 130 145",
                       "RECT 327 710 6 24 1",
                       "DRAWCOLOR 150 165 180",
                       R"(TEXT 290 690 "Schlagseite")",
                       "DRAWCOLOR 130 145 160",
                       R"(TEXT 274 738 "wieder scharf in 3")",
                   }));
}

// ---- shake
// ---------------------------------------------------------------------------------------

TEST_F(FrameTest, AShakeOfEightMovesTheWellTwoRightAndThreeDown) {
  SHAKE = 8;
  frame();
  EXPECT_EQ(BX, 152);
  EXPECT_EQ(BY, 83);
  EXPECT_EQ(SHAKE, 7);
}

TEST_F(FrameTest, AShakeOfFiveMovesTheWellOneDown) {
  SHAKE = 5;
  frame();
  EXPECT_EQ(BX, 150);
  EXPECT_EQ(BY, 81);
  EXPECT_EQ(SHAKE, 4);
}

TEST_F(FrameTest, WithoutShakeNothingMovesAndTheValueStays) {
  frame();
  EXPECT_EQ(BX, 150);
  EXPECT_EQ(BY, 80);
  EXPECT_EQ(SHAKE, 0);
}

TEST_F(FrameTest, AShakeMovesTheWellAndLeavesSkyHorizonAndHud) {
  const Trace still = frame();
  SHAKE = 8;
  const Trace shaken = frame();
  ASSERT_EQ(shaken.size(), still.size());
  EXPECT_TRUE(same(part(shaken, 0, after_horizon + 1), part(still, 0, after_horizon + 1)));
  EXPECT_EQ(shaken[after_horizon + 1], "RECT 144 75 376 556 1");
  EXPECT_EQ(shaken[after_horizon + 3], "RECT 153 84 34 34 1");
  const size_t hud = hud_above.size() + hud_below.size() + 1;
  EXPECT_TRUE(same(part(shaken, shaken.size() - hud, hud), part(still, still.size() - hud, hud)));
}

// ---- board, stars, ghost, piece
// ------------------------------------------------------------------

TEST_F(FrameTest, CellsAreDrawnRowByRow) {
  put(0, 1, 3);
  put(1, 0, 4);
  const Trace trace = frame();
  const Trace expected = drawing_of([] {
    for (int row = 0; row < 15; ++row)
      for (int column = 0; column < 10; ++column)
        run(DRAWCELL(row, column, at(row, column)));
  });
  EXPECT_TRUE(same(part(trace, after_horizon + 2, expected.size()), expected));
}

TEST_F(FrameTest, AStarIsADiamondBetweenCellsAndGhost) {
  qor_array_set(STAR_ON.get(), 2, 1);
  qor_array_set(STAR_R.get(), 2, 4);
  qor_array_set(STAR_C.get(), 2, 2);
  qor_array_set(STAR_R.get(), 3, 9); // not there
  const Trace trace = frame();
  EXPECT_TRUE(same(part(trace, after_horizon + 2 + 300, 6), {
                                                                "DRAWCOLOR 250 225 90",
                                                                "LINE 240 233 249 242",
                                                                "LINE 249 242 240 251",
                                                                "LINE 240 251 231 242",
                                                                "LINE 231 242 240 233",
                                                                "DRAWCOLOR 70 84 100",
                                                            }));
}

TEST_F(FrameTest, AStarOffTheBoardIsDrawnWhereItsNumbersPutIt) {
  qor_array_set(STAR_ON.get(), 0, 1);
  qor_array_set(STAR_R.get(), 0, -3);
  qor_array_set(STAR_C.get(), 0, 20.5);
  EXPECT_EQ(part(frame(), after_horizon + 2 + 300, 6)[1], "LINE 906 -19 915 -10");
}

TEST_F(FrameTest, AGhostBesideTheBoardIsDrawnWhereItsNumbersPutIt) {
  PIECEX = 20;
  PIECEY = 2;
  EXPECT_TRUE(same(only("RECT", between(frame(), "DRAWCOLOR 70 84 100", "DRAWCOLOR 235 235 245")),
                   {"RECT 910 156 28 28 0", "RECT 946 156 28 28 0", "RECT 910 192 28 28 0",
                    "RECT 946 192 28 28 0"}));
}

TEST_F(FrameTest, TheGhostLiesWhereThePieceWouldLand) {
  put(14, 4);
  put(13, 5);
  const Trace trace = frame();
  EXPECT_TRUE(same(only("RECT", between(trace, "DRAWCOLOR 70 84 100", "DRAWCOLOR 235 205 70")),
                   {"RECT 298 480 28 28 0", "RECT 334 480 28 28 0", "RECT 298 516 28 28 0",
                    "RECT 334 516 28 28 0"}));
}

TEST_F(FrameTest, RowsOfAPieceAboveTheWellAreNotShown) {
  PIECEY = -1;
  put(2, 4); // the ghost's lower row is row 1, its upper row 0
  const Trace trace = frame();
  EXPECT_EQ(only("DRAWCOLOR 235 205 70", trace).size(), 0);
  EXPECT_EQ(std::ranges::count(trace, "DRAWCOLOR 235 205 70"), 2);
}

TEST_F(FrameTest, AGhostAboveTheWellIsCutOff) {
  PIECEY = -1;
  put(1, 4);
  EXPECT_TRUE(same(only("RECT", between(frame(), "DRAWCOLOR 70 84 100", "DRAWCOLOR 235 205 70")),
                   {"RECT 298 84 28 28 0", "RECT 334 84 28 28 0"}));
}

// ---- HUD and banners
// -----------------------------------------------------------------------------

TEST_F(FrameTest, TheCountersAndTheBestScoreShowTheGame) {
  SCORE = 12345;
  LINESCLEARED = 67;
  LEVEL = 7;
  qor_array_set(HS_SCORE.get(), 0, 99000);
  const Trace trace = frame();
  EXPECT_TRUE(contains(trace, R"(TEXT 60 642 "Score:  12345")"));
  EXPECT_TRUE(contains(trace, R"(TEXT 60 664 "Reihen: 67")"));
  EXPECT_TRUE(contains(trace, R"(TEXT 60 686 "Level:  7")"));
  EXPECT_TRUE(contains(trace, R"(TEXT 450 28 "Best: 99000")"));
}

TEST_F(FrameTest, TheBannersComeAfterTheHudAndCountThemselvesDown) {
  FLASH = 2;
  COMBOFLASH = 1;
  COMBOSHOW = 3;
  const Trace trace = frame();
  EXPECT_TRUE(same(part(trace, trace.size() - 6, 6),
                   {R"(TEXT 290 690 "Schlagseite")", "DRAWCOLOR 250 230 90",
                    R"(TEXT 235 290 "* SCHLAGSEITE! *")", "DRAWCOLOR 255 180 80",
                    R"(TEXT 270 380 "COMBO x3")", "SCREENFLIP"}));
  EXPECT_EQ(FLASH, 1);
  EXPECT_EQ(COMBOFLASH, 0);
  EXPECT_FALSE(contains(frame(), R"(TEXT 270 380 "COMBO x3")"));
  EXPECT_EQ(FLASH, 0);
  EXPECT_EQ(COMBOFLASH, 0);
}

TEST_F(FrameTest, EffectsComeInTheirOrderAfterTheBanners) {
  put(0, 0);
  COMBOFLASH = 1;
  run(ADDPOPUP(100, 200, 199));
  run(ADDPART(10, 20, 0, 0, 5, 1, 2, 3));
  run(ADDSTREAK(7, 8, 9));
  SHOCKLIFE = 16;
  LIGHTNING = 1;
  const Trace effects = between(frame(), "DRAWCOLOR 255 180 80", "SCREENFLIP");
  Trace colours = only("DRAWCOLOR", effects);
  EXPECT_TRUE(same(colours, {
                                "DRAWCOLOR 255 180 80",  // combo banner
                                "DRAWCOLOR 251 251 90",  // popup
                                "DRAWCOLOR 1 2 3",       // particle
                                "DRAWCOLOR 240 240 170", // streak
                                "DRAWCOLOR 255 180 80",  // shock square
                                "DRAWCOLOR 120 140 180", // rain
                                "DRAWCOLOR 235 240 255", // bolt
                            }));
}

TEST_F(FrameTest, EveryTimerLosesExactlyOneInAFrameAndNoneFallsBelowZero) {
  SHAKE = FLASH = COMBOFLASH = SHOCKLIFE = LIGHTNING = 1;
  for (int frames = 0; frames < 2; ++frames) {
    frame();
    for (const int64_t timer : {SHAKE, FLASH, COMBOFLASH, SHOCKLIFE, LIGHTNING})
      EXPECT_EQ(timer, 0);
  }
}

} // namespace
} // namespace kavo::test
