#include "game/presentation/sky.h"
#include "game/presentation/title.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class TitleTest : public GameTest {
protected:
  static void set_entry(int64_t slot, const char* name, double score) {
    put_text(HS_NAME.get(), slot, name);
    qor_array_set(HS_SCORE.get(), slot, score);
  }
};

TEST_F(TitleTest, TheScreenIsDrawnInOrder) {
  run(DRAWSKY());
  const Trace sky = drawn();
  run(DRAWTITLE());
  EXPECT_TRUE(same(
      drawn(),
      joined(
          {{"CLS", "DRAWCOLOR 12 26 44", "RECT 0 0 660 800 1"},
           sky,
           {
               "DRAWCOLOR 245 245 255", R"(TEXT 150 120 "K A V O")",
               "DRAWCOLOR 170 190 210", R"(TEXT 120 158 "- Schlagseite -")",
               "DRAWCOLOR 200 210 160", R"(TEXT 140 230 "HIGHSCORES")",
               "DRAWCOLOR 210 215 225", R"(TEXT 115 270 "1.   ---    0")",
               "DRAWCOLOR 210 215 225", R"(TEXT 115 300 "2.   ---    0")",
               "DRAWCOLOR 210 215 225", R"(TEXT 115 330 "3.   ---    0")",
               "DRAWCOLOR 210 215 225", R"(TEXT 115 360 "4.   ---    0")",
               "DRAWCOLOR 210 215 225", R"(TEXT 115 390 "5.   ---    0")",
               "DRAWCOLOR 250 230 120", R"(TEXT 130 470 "SPACE = Start")",
               "DRAWCOLOR 160 175 190", R"(TEXT 80 510 "O = Optionen   M = Musik   ESC = Beenden")",
           }})));
}

TEST_F(TitleTest, TheDefaultTableShowsFiveDashesWithZero) {
  run(DRAWTITLE());
  const Trace texts = only("TEXT", drawn());
  for (const char* line : {R"(TEXT 115 270 "1.   ---    0")", R"(TEXT 115 390 "5.   ---    0")"})
    EXPECT_TRUE(contains(texts, line)) << line;
}

TEST_F(TitleTest, NamesWithBlanksAreShownAsTheyAre) {
  set_entry(0, " A ", 12000);
  set_entry(1, "   ", 8400);
  run(DRAWTITLE());
  const Trace texts = only("TEXT", drawn());
  EXPECT_TRUE(contains(texts, R"(TEXT 115 270 "1.    A     12000")"));
  EXPECT_TRUE(contains(texts, R"(TEXT 115 300 "2.          8400")"));
}

TEST_F(TitleTest, ScoresAreWrittenByTheNumberConversion) {
  set_entry(0, "JON", 1e15);
  set_entry(1, "ABE", 2.5);
  run(DRAWTITLE());
  const Trace texts = only("TEXT", drawn());
  EXPECT_TRUE(contains(texts, R"(TEXT 115 270 "1.   JON    1e+15")"));
  EXPECT_TRUE(contains(texts, R"(TEXT 115 300 "2.   ABE    2.5")"));
}

TEST_F(TitleTest, TheScreenFollowsTheLeftEdgeOfThePlayArea) {
  AX = 70;
  run(DRAWTITLE());
  const Trace texts = only("TEXT", drawn());
  EXPECT_EQ(texts.front(), R"(TEXT 160 120 "K A V O")");
  EXPECT_EQ(texts.back(), R"(TEXT 90 510 "O = Optionen   M = Musik   ESC = Beenden")");
}

TEST_F(TitleTest, ColoursAreThreeIntegersAndTextsHaveANumberAndAnInteger) {
  run(DRAWTITLE());
  EXPECT_TRUE(contains(host().trace, "DRAWCOLOR i245 i245 i255"));
  EXPECT_TRUE(contains(host().trace, "RECT i0 i0 i660 i800 i1"));
  EXPECT_TRUE(contains(host().trace, R"(TEXT f150 i120 "K A V O")"));
  EXPECT_TRUE(contains(host().trace, R"(TEXT f115 i270 "1.   ---    0")"));
}

TEST_F(TitleTest, TheScreenIsNotPresentedByItself) {
  run(DRAWTITLE());
  EXPECT_EQ(host().count("SCREENFLIP"), 0);
}

TEST_F(TitleTest, DrawingStopsAtTheCommandThatFails) {
  EXPECT_GT(fail_each_command([] {}, [] { run(DRAWTITLE()); }), 0);
}

} // namespace
} // namespace kavo::test
