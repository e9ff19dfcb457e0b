// The table in memory: ranks and insertion. Its file has a test of its own.
#include "game/highscores/table.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class TableTest : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    fill({{"ONE", 500}, {"TWO", 400}, {"TRE", 300}, {"FOR", 200}, {"FIV", 100}});
  }

  static void fill(std::initializer_list<std::pair<const char*, double>> entries) {
    int64_t slot = 0;
    for (const auto& [name, score] : entries) {
      put_text(HS_NAME.get(), slot, name);
      qor_array_set(HS_SCORE.get(), slot++, score);
    }
  }

  // All five entries as "ONE 500, TWO 400, …".
  static std::string table() {
    std::string text;
    for (int64_t slot = 0; slot < 5; ++slot)
      text += (slot > 0 ? ", " : "") + name_at(slot) + " " +
              std::to_string(static_cast<int64_t>(score_at(slot)));
    return text;
  }

  // Without a file: the saving is the host's.
  static void insert(const char* name, double rank, double score) {
    host().fail_name = "BINWRITER";
    run(HS_INSERT(name, rank, score));
    EXPECT_EQ(take_error(), "BINWRITER: failed on command");
  }
};

double rank_of(double score) {
  return run(HS_RANK(score));
}

TEST_F(TableTest, TheFirstEntryThatIsBeatenIsTheRank) {
  EXPECT_EQ(rank_of(501), 0);
  EXPECT_EQ(rank_of(450), 1);
  EXPECT_EQ(rank_of(350), 2);
  EXPECT_EQ(rank_of(250), 3);
  EXPECT_EQ(rank_of(150), 4);
}

TEST_F(TableTest, AScoreThatBeatsNothingHasNoRank) {
  EXPECT_EQ(rank_of(99), -1);
  EXPECT_EQ(rank_of(100), -1);
}

TEST_F(TableTest, AScoreEqualToTheThirdAndGreaterThanTheFourthGetsRankThree) {
  EXPECT_EQ(rank_of(300), 3);
}

TEST_F(TableTest, ZeroNeverEntersAnEmptyTable) {
  fill({{"---", 0}, {"---", 0}, {"---", 0}, {"---", 0}, {"---", 0}});
  EXPECT_EQ(rank_of(0), -1);
  EXPECT_EQ(rank_of(1), 0);
}

TEST_F(TableTest, ATableOutOfOrderIsSearchedAsItStands) {
  fill({{"ONE", 100}, {"TWO", 900}, {"TRE", 50}, {"FOR", 0}, {"FIV", 0}});
  EXPECT_EQ(rank_of(150), 0);
  EXPECT_EQ(rank_of(75), 2);
}

TEST_F(TableTest, RankingSendsNothingAndChangesNothing) {
  rank_of(350);
  EXPECT_TRUE(same(new_trace(), {}));
  EXPECT_EQ(table(), "ONE 500, TWO 400, TRE 300, FOR 200, FIV 100");
}

TEST_F(TableTest, BeatingTheFirstEntryPushesTheFifthOut) {
  insert("NEW", 0, 600);
  EXPECT_EQ(table(), "NEW 600, ONE 500, TWO 400, TRE 300, FOR 200");
}

TEST_F(TableTest, AnEntryInTheMiddleMovesTheWorseOnesDown) {
  insert("NEW", 2, 350);
  EXPECT_EQ(table(), "ONE 500, TWO 400, NEW 350, TRE 300, FOR 200");
}

TEST_F(TableTest, AnEntryInTheLastSlotReplacesTheFifth) {
  insert("NEW", 4, 150);
  EXPECT_EQ(table(), "ONE 500, TWO 400, TRE 300, FOR 200, NEW 150");
}

TEST_F(TableTest, AFractionalRankIsCut) {
  insert("NEW", 2.9, 350);
  EXPECT_EQ(table(), "ONE 500, TWO 400, NEW 350, TRE 300, FOR 200");
}

TEST_F(TableTest, TheInsertedNameIsACopy) {
  char name[] = "NEW";
  insert(name, 0, 600);
  name[0] = 'X';
  EXPECT_EQ(name_at(0), "NEW");
}

TEST_F(TableTest, AnEntryOfTheTableItselfCanBeInserted) {
  insert(qor_array_get_str(HS_NAME.get(), 3), 0, 600);
  EXPECT_EQ(table(), "FOR 600, ONE 500, TWO 400, TRE 300, FOR 200");
}

} // namespace
} // namespace kavo::test
