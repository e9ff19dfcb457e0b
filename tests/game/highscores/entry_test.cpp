// Naming a new high score.
#include <cmath>
#include <filesystem>

#include "game/highscores/entry.h"
#include "game/presentation/entry.h"
#include "game/presentation/sky.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class EntryTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    std::filesystem::create_directory("tmp");
    prepare();
  }

  static void prepare() {
    enter_state("enter");
    ENTERRANK = 0;
    SCORE = 4242;
  }

  static void up(int times = 1) { repeat(times, 1, 0, 0, 0, 0); }
  static void down(int times = 1) { repeat(times, 0, 1, 0, 0, 0); }
  static void left() { repeat(1, 0, 0, 1, 0, 0); }
  static void right() { repeat(1, 0, 0, 0, 1, 0); }
  static void confirm() { repeat(1, 0, 0, 0, 0, 1); }

  static double letter(int64_t position) { return qor_array_get(ENTERNAME.get(), position); }

  WorkingFolder folder;

private:
  static void repeat(int times, double up, double down, double left, double right, double enter) {
    for (int time = 0; time < times; ++time)
      run(UPDATEENTER(up, down, left, right, enter));
  }
};

std::string character(double index) {
  return chars(run(ENTER_CHAR$(index)));
}

TEST_F(EntryTest, IndexesZeroToTwentyFiveAreTheLetters) {
  EXPECT_EQ(character(0), "A");
  EXPECT_EQ(character(10), "K");
  EXPECT_EQ(character(25), "Z");
}

TEST_F(EntryTest, FromTwentySixOnTheCharacterIsABlank) {
  EXPECT_EQ(character(26), " ");
  EXPECT_EQ(character(27), " ");
  EXPECT_EQ(character(1e9), " ");
}

TEST_F(EntryTest, AFractionalIndexIsCutToTheLetterBelow) {
  EXPECT_EQ(character(1.9), "B");
  EXPECT_EQ(character(25.9), "Z");
}

TEST_F(EntryTest, DownOnAFreshEntryGivesABlankAndConfirmingStoresABlankAndTwoA) {
  down();
  EXPECT_EQ(letter(0), 26);
  run(DRAWENTER());
  EXPECT_TRUE(contains(drawn(), R"(TEXT 180 290 "_")"));
  confirm();
  EXPECT_EQ(name_at(0), " AA");
}

TEST_F(EntryTest, UpTwentySevenTimesReturnsToA) {
  up(26);
  EXPECT_EQ(letter(0), 26);
  up();
  EXPECT_EQ(letter(0), 0);
}

TEST_F(EntryTest, DownGoesBackFromTheBlankToZ) {
  down(2);
  EXPECT_EQ(letter(0), 25);
}

TEST_F(EntryTest, LeftAtTheFirstAndRightAtTheLastPositionDoNothing) {
  left();
  EXPECT_EQ(ENTERPOS, 0);
  right();
  right();
  EXPECT_EQ(ENTERPOS, 2);
  right();
  EXPECT_EQ(ENTERPOS, 2);
  left();
  EXPECT_EQ(ENTERPOS, 1);
}

TEST_F(EntryTest, UpAndDownInTheSameFrameCancelOut) {
  up(5);
  run(UPDATEENTER(1, 1, 0, 0, 0));
  EXPECT_EQ(letter(0), 5);
  EXPECT_EQ(letter(1), 0);
}

TEST_F(EntryTest, LeftAndRightInTheSameFrameCancelOutInTheMiddleOnly) {
  ENTERPOS = 1;
  run(UPDATEENTER(0, 0, 1, 1, 0));
  EXPECT_EQ(ENTERPOS, 1);
  ENTERPOS = 0;
  run(UPDATEENTER(0, 0, 1, 1, 0));
  EXPECT_EQ(ENTERPOS, 1);
  ENTERPOS = 2;
  run(UPDATEENTER(0, 0, 1, 1, 0));
  EXPECT_EQ(ENTERPOS, 2);
}

TEST_F(EntryTest, TheLetterTurnsBeforeThePositionMoves) {
  run(UPDATEENTER(1, 0, 0, 1, 0));
  EXPECT_EQ(letter(0), 1);
  EXPECT_EQ(letter(1), 0);
  EXPECT_EQ(ENTERPOS, 1);
}

TEST_F(EntryTest, ConfirmingImmediatelyStoresAaa) {
  confirm();
  EXPECT_EQ(name_at(0), "AAA");
  EXPECT_EQ(score_at(0), 4242);
}

TEST_F(EntryTest, ALetterTurnedInTheConfirmingFrameCounts) {
  run(UPDATEENTER(1, 0, 0, 0, 1));
  EXPECT_EQ(name_at(0), "BAA");
}

TEST_F(EntryTest, ConfirmingSavesTheTableAndReturnsToTheTitle) {
  up(10);
  right();
  right();
  up(21);
  confirm();
  EXPECT_TRUE(state_is("title"));
  EXPECT_EQ(read_file("tmp/kavo_high.txt"), "KAV;4242\n---;0\n---;0\n---;0\n---;0");
}

TEST_F(EntryTest, TheEntryGoesToTheSlotThatItsRankNames) {
  for (int64_t rank = 0; rank < 5; ++rank) {
    SCOPED_TRACE(rank);
    start_afresh();
    prepare();
    for (int64_t slot = 0; slot < 5; ++slot)
      qor_array_set(HS_SCORE.get(), slot, 500.0 - 100.0 * static_cast<double>(slot));
    ENTERRANK = rank;
    confirm();
    for (int64_t slot = 0; slot < 5; ++slot) {
      EXPECT_EQ(name_at(slot), slot == rank ? "AAA" : "---");
      const double old = 500.0 - 100.0 * static_cast<double>(slot > rank ? slot - 1 : slot);
      EXPECT_EQ(score_at(slot), slot == rank ? 4242 : old);
    }
  }
}

TEST_F(EntryTest, ANameOfBlanksIsStoredAsItIs) {
  for (int position = 0; position < 3; ++position) {
    down();
    right();
  }
  confirm();
  EXPECT_EQ(name_at(0), "   ");
  EXPECT_EQ(read_file("tmp/kavo_high.txt").substr(0, 8), "   ;4242");
}

TEST_F(EntryTest, WithoutInputNothingChanges) {
  const double nan = std::nan("");
  run(UPDATEENTER(0, 0, 0, 0, 0));
  run(UPDATEENTER(nan, nan, nan, nan, nan));
  EXPECT_EQ(letter(0), 0);
  EXPECT_EQ(ENTERPOS, 0);
  EXPECT_TRUE(state_is("enter"));
  EXPECT_TRUE(same(new_trace(), {}));
}

TEST_F(EntryTest, TheScreenIsDrawnInOrder) {
  SCORE = 9999;
  ENTERNAME = numbers({10, 26, 21});
  ENTERPOS = 1;
  run(DRAWSKY());
  const Trace sky = drawn();
  run(DRAWENTER());
  EXPECT_TRUE(same(drawn(), joined({{"CLS", "DRAWCOLOR 12 26 44", "RECT 0 0 660 800 1"},
                                    sky,
                                    {
                                        "DRAWCOLOR 250 230 120",
                                        R"(TEXT 100 150 "NEUER HIGHSCORE!")",
                                        "DRAWCOLOR 220 225 235",
                                        R"(TEXT 150 200 "Punkte: 9999")",
                                        "DRAWCOLOR 200 210 220",
                                        R"(TEXT 180 290 "K")",
                                        "DRAWCOLOR 250 230 120",
                                        R"(TEXT 240 290 "_")",
                                        "DRAWCOLOR 200 210 220",
                                        R"(TEXT 300 290 "V")",
                                        "DRAWCOLOR 160 175 190",
                                        R"-(TEXT 90 380 "Hoch/Runter = Buchstabe (inkl. Leer)")-",
                                        R"(TEXT 90 410 "Links/Rechts = Stelle, Enter = OK")",
                                    }})));
  EXPECT_EQ(host().count("SCREENFLIP"), 0);
}

TEST_F(EntryTest, TheWholeScreenIsFilledWithFiveIntegers) {
  run(DRAWENTER());
  EXPECT_TRUE(contains(host().trace, "RECT i0 i0 i660 i800 i1"));
  EXPECT_TRUE(contains(host().trace, "DRAWCOLOR i250 i230 i120"));
}

TEST_F(EntryTest, DrawingStopsAtTheCommandThatFails) {
  EXPECT_GT(fail_each_command(prepare, [] { run(DRAWENTER()); }), 0);
}

TEST_F(EntryTest, WhenSavingFailsTheEntryStaysOnScreenAndTheErrorPends) {
  host().fail_name = "BINWRITER";
  confirm();
  EXPECT_EQ(take_error(), "BINWRITER: failed on command");
  EXPECT_TRUE(state_is("enter"));
  EXPECT_EQ(name_at(0), "AAA");
  EXPECT_FALSE(std::filesystem::exists("tmp/kavo_high.txt"));
}

} // namespace
} // namespace kavo::test
