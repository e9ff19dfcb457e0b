#include "game/presentation/cells.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class CellsTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    BX = 150;
    BY = 80;
  }
};

TEST_F(CellsTest, EveryKindHasItsColour) {
  const Color expected[] = {{90, 210, 230},  {80, 120, 230},  {235, 150, 60},  {235, 205, 70},
                            {110, 200, 95},  {200, 110, 210}, {220, 90, 90},   {240, 110, 60},
                            {120, 230, 245}, {245, 215, 80},  {110, 120, 140}, {245, 200, 250}};
  double kind = 1;
  for (const Color& color : expected)
    EXPECT_EQ(run(COLOR_FOR(kind++)), color) << "kind " << kind - 1;
}

TEST_F(CellsTest, ZeroAndThirteenAreGrey) {
  const Color grey = {200, 200, 200};
  EXPECT_EQ(run(COLOR_FOR(0)), grey);
  EXPECT_EQ(run(COLOR_FOR(13)), grey);
}

TEST_F(CellsTest, NegativeAndFractionalValuesAreGrey) {
  const Color grey = {200, 200, 200};
  EXPECT_EQ(run(COLOR_FOR(-1)), grey);
  EXPECT_EQ(run(COLOR_FOR(1.5)), grey);
  EXPECT_EQ(run(COLOR_FOR(11.999999)), grey);
}

TEST_F(CellsTest, CellsOutsideTheBoardAreNotDrawn) {
  run(DRAWCELL(-1, 3, 5));
  run(DRAWCELL(2, 10, 5));
  run(DRAWCELL(15, 3, 5));
  run(DRAWCELL(2, -1, 5));
  EXPECT_TRUE(same(drawn(), {}));
}

TEST_F(CellsTest, TheBoardsOwnSizeDecidesWhatIsOutside) {
  set_board_size(10, 15);
  run(DRAWCELL(10, 3, 0));
  EXPECT_TRUE(same(drawn(), {}));
  run(DRAWCELL(9, 14, 0));
  EXPECT_TRUE(same(drawn(), {"DRAWCOLOR 28 40 56", "RECT 655 405 34 34 1"}));
}

TEST_F(CellsTest, AnEmptyCellIsOneDarkSquare) {
  run(DRAWCELL(0, 0, 0));
  EXPECT_TRUE(same(drawn(), {"DRAWCOLOR 28 40 56", "RECT 151 81 34 34 1"}));
}

TEST_F(CellsTest, ABlockHasABodyLightAboveAndLeftAndShadeBelowAndRight) {
  run(DRAWCELL(2, 3, 1));
  EXPECT_TRUE(same(drawn(), {
                                "DRAWCOLOR 90 210 230",
                                "RECT 259 153 34 34 1",
                                "DRAWCOLOR 145 265 285",
                                "RECT 259 153 34 3 1",
                                "RECT 259 153 3 34 1",
                                "DRAWCOLOR 30 150 170",
                                "RECT 259 184 34 3 1",
                                "RECT 290 153 3 34 1",
                            }));
}

TEST_F(CellsTest, ACrossLineHasItsColoursUnclampedAndThenItsLabel) {
  run(DRAWCELL(0, 0, 9));
  EXPECT_TRUE(same(drawn(), {
                                "DRAWCOLOR 120 230 245",
                                "RECT 151 81 34 34 1",
                                "DRAWCOLOR 175 285 300",
                                "RECT 151 81 34 3 1",
                                "RECT 151 81 3 34 1",
                                "DRAWCOLOR 60 170 185",
                                "RECT 151 112 34 3 1",
                                "RECT 182 81 3 34 1",
                                "DRAWCOLOR 25 25 30",
                                R"(TEXT 163 89 "L")",
                            }));
}

TEST_F(CellsTest, ShadeMayFallBelowZero) {
  run(DRAWCELL(0, 0, 3)); // blue component 60
  run(DRAWCELL(0, 0, 7)); // green and blue 90
  EXPECT_TRUE(contains(only("DRAWCOLOR", drawn()), "DRAWCOLOR 175 90 0"));
}

TEST_F(CellsTest, OnlyKindsFromEightOnCarryALabel) {
  for (int kind = 1; kind <= 12; ++kind) {
    run(DRAWCELL(0, 0, kind));
    EXPECT_EQ(only("TEXT", drawn()).size(), kind >= 8 ? 1 : 0) << kind;
  }
}

TEST_F(CellsTest, AMiniPieceIsMadeOfElevenPixelSquaresOnAThirteenPixelPitch) {
  run(DRAWMINI(6, 538, 644, 13, shape(t_piece)));
  EXPECT_TRUE(same(drawn(), {
                                "DRAWCOLOR 200 110 210",
                                "RECT 551 644 11 11 1",
                                "DRAWCOLOR 200 110 210",
                                "RECT 538 657 11 11 1",
                                "DRAWCOLOR 200 110 210",
                                "RECT 551 657 11 11 1",
                                "DRAWCOLOR 200 110 210",
                                "RECT 564 657 11 11 1",
                            }));
}

TEST_F(CellsTest, AMiniSpecialPieceCarriesItsLabel) {
  run(DRAWMINI(8, 538, 644, 13, shape(single_cell)));
  EXPECT_TRUE(same(drawn(), {
                                "DRAWCOLOR 240 110 60",
                                "RECT 551 657 11 11 1",
                                "DRAWCOLOR 25 25 30",
                                R"(TEXT 553 655 "B")",
                            }));
}

TEST_F(CellsTest, AMiniPieceOfAnySizeKeepsATwoPixelGap) {
  run(DRAWMINI(1, 0, 0, 20, shape(i_piece)));
  EXPECT_TRUE(same(only("RECT", drawn()), {"RECT 0 20 18 18 1", "RECT 20 20 18 18 1",
                                           "RECT 40 20 18 18 1", "RECT 60 20 18 18 1"}));
}

TEST_F(CellsTest, AnEmptyMatrixDrawsNothing) {
  run(DRAWMINI(1, 0, 0, 13, shape({})));
  EXPECT_TRUE(same(drawn(), {}));
}

TEST_F(CellsTest, DrawingStopsAtTheCommandThatFails) {
  EXPECT_EQ(fail_each_command([] {}, [] { run(DRAWCELL(0, 0, 9)); }), 10);
  EXPECT_EQ(fail_each_command([] {}, [] { run(DRAWMINI(8, 0, 0, 13, shape(o_piece))); }), 16);
}

} // namespace
} // namespace kavo::test
