// What must hold in every game, shown over many random ones: on both board shapes, played by a
// clumsy and by a greedy player.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <map>
#include <ostream>

#include "game/board/collision.h"
#include "game/board/pull.h"
#include "game/clearing/lines.h"
#include "game/highscores/table.h"
#include "game/playfield/lean.h"
#include "game/playfield/movement.h"
#include "game/playfield/new_game.h"
#include "game/playfield/pieces.h"
#include "game/program.h"
#include "tests/game/game_fixture.h"
#include "tests/game/players.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

using Random = std::mt19937_64;

double draw(Random& random) {
  return static_cast<double>(random() >> 11) * 0x1p-53;
}

// A new board of this shape with blocks of random kinds, more of them towards one side.
void scatter(Random& random, int64_t rows, int64_t columns) {
  set_board_size(rows, columns);
  const double chance_on_the_left = 0.8 * draw(random);
  const double slope = (0.8 * draw(random) - chance_on_the_left) / static_cast<double>(columns);
  for (int64_t row = 0; row < rows; ++row)
    for (int64_t column = 0; column < columns; ++column)
      if (draw(random) < chance_on_the_left + slope * static_cast<double>(column))
        put(row, column, static_cast<double>(random() % 12 + 1));
}

// How many blocks there are of each kind.
std::map<double, int> census() {
  std::map<double, int> kinds;
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      ++kinds[at(row, column)];
  kinds.erase(0.0);
  return kinds;
}

// The blocks of a column from the floor up.
std::vector<double> column_of_blocks(int64_t column) {
  std::vector<double> blocks;
  for (int64_t row = ROWS - 1; row >= 0; --row)
    if (at(row, column) != 0.0)
      blocks.push_back(at(row, column));
  return blocks;
}

bool has_full_row() {
  for (int64_t row = 0; row < ROWS; ++row) {
    int64_t blocks = 0;
    for (int64_t column = 0; column < COLS; ++column)
      blocks += at(row, column) != 0.0;
    if (blocks == COLS)
      return true;
  }
  return false;
}

constexpr std::pair<int64_t, int64_t> board_shapes[] = {{15, 10}, {10, 15}};

// ---- random boards ------------------------------------------------------------------------------

class RandomBoardTest : public GameTest {
protected:
  // Calls `check` on many random boards of both shapes.
  template<typename Check>
  static void on_many_boards(Check check) {
    Random random(20);
    for (const auto& [rows, columns] : board_shapes) {
      for (int board = 0; board < 150 && !HasFailure(); ++board) {
        start_afresh();
        host().is_discarding = true;
        scatter(random, rows, columns);
        SCOPED_TRACE(board_text());
        check();
      }
    }
  }
};

TEST_F(RandomBoardTest, SettlingKeepsEachColumnsOrderAndLeavesNoHole) {
  on_many_boards([] {
    std::vector<std::vector<double>> before;
    for (int64_t column = 0; column < COLS; ++column)
      before.push_back(column_of_blocks(column));
    run(SETTLEDOWN());
    for (int64_t column = 0; column < COLS; ++column) {
      EXPECT_EQ(column_of_blocks(column), before[column]);
      const auto height = static_cast<int64_t>(before[column].size());
      for (int64_t row = 0; row < ROWS; ++row)
        EXPECT_EQ(at(row, column) != 0.0, row >= ROWS - height);
    }
  });
}

TEST_F(RandomBoardTest, ATipSwapsTheDimensionsAndKeepsEveryBlockThatItDoesNotClear) {
  int tips = 0;
  int tips_without_clear = 0;
  on_many_boards([&] {
    const auto before = census();
    const int64_t blocks = blocks_on_board();
    const int64_t rows = ROWS;
    const int64_t columns = COLS;
    const double pull = run(TORQUE());
    run(APPLYKAVO());
    const bool has_tipped = ROWS != rows;
    EXPECT_EQ(has_tipped, std::abs(pull) > 40);
    if (!has_tipped)
      return;
    ++tips;
    EXPECT_EQ(ROWS, columns);
    EXPECT_EQ(COLS, rows);
    EXPECT_EQ(blocks_on_board(), blocks - LINESCLEARED * COLS);
    EXPECT_FALSE(has_full_row());
    if (LINESCLEARED > 0)
      return;
    ++tips_without_clear;
    EXPECT_EQ(census(), before);
  });
  EXPECT_GT(tips, 30) << "too few boards tipped to show anything";
  EXPECT_GT(tips_without_clear, 10);
}

TEST_F(RandomBoardTest, ClearingRemovesTheFullRowsAndKeepsTheOthersInOrder) {
  on_many_boards([] {
    for (const int64_t row : {2, 5, 6, 9})
      fill_row(row, 12);
    std::string expected;
    for (int64_t row = 0; row < ROWS; ++row) {
      const std::string line = board_text().substr(row * (COLS + 1), COLS + 1);
      if (line.find('.') != std::string::npos)
        expected += line;
    }
    run(CLEARLINES());
    EXPECT_GE(CLEARED, 4);
    EXPECT_EQ(bottom_text(ROWS - CLEARED), expected);
    EXPECT_EQ(board_text().find_first_not_of(".\n"),
              bottom_text(ROWS - CLEARED).find_first_not_of(".\n") + CLEARED * (COLS + 1));
  });
}

TEST_F(RandomBoardTest, FourQuarterTurnsAreNoTurn) {
  on_many_boards([] {
    const std::string before = board_text();
    for (int turn = 0; turn < 4; ++turn) {
      BOARD = run(ROTATEMATRIX(BOARD));
      std::swap(ROWS, COLS);
    }
    EXPECT_EQ(board_text(), before);
  });
}

TEST_F(RandomBoardTest, FourTurnsOfAPieceInTheOpenAreNoTurn) {
  for (const auto& piece : {i_piece, o_piece, t_piece, single_cell}) {
    hold(shape(piece), 1, 3, 5);
    const std::string before = shape_text(CURRENTPIECE);
    for (int turn = 0; turn < 4; ++turn)
      run(TRYROTATE());
    EXPECT_EQ(shape_text(CURRENTPIECE), before);
    EXPECT_EQ(PIECEX, 3);
  }
}

// ---- random games, lock by lock -----------------------------------------------------------------

struct Game {
  bool is_wide;
  bool is_greedy;
  uint64_t seed;
};

void PrintTo(const Game& game, std::ostream* out) {
  *out << (game.is_wide ? "wide" : "tall") << " board, " << (game.is_greedy ? "greedy" : "clumsy")
       << " player, seed " << game.seed;
}

std::vector<Game> many_games() {
  std::vector<Game> games;
  for (const bool is_wide : {false, true})
    for (const bool is_greedy : {false, true})
      for (uint64_t seed = 1; seed <= 3; ++seed)
        games.push_back({is_wide, is_greedy, seed});
  return games;
}

class RandomGameTest : public GameTest, public ::testing::WithParamInterface<Game> {
protected:
  void SetUp() override {
    GameTest::SetUp();
    host().random_seed = GetParam().seed;
    host().is_discarding = true;
    new_game();
  }

  static void new_game() {
    run(RESETGAME());
    if (!GetParam().is_wide)
      return;
    set_board_size(10, 15);
    run(SPAWNPIECE());
  }

  void drop_next_piece() {
    drop_at(GetParam().is_greedy ? best_placement() : random_placement(random_));
  }

  // Plays on, game after game, and calls `check` after every lock.
  template<typename Check>
  void after_each_lock(Check check) {
    for (int lock = 0; lock < 400 && !HasFailure(); ++lock) {
      if (GAMEOVER)
        new_game();
      SCOPED_TRACE("lock " + std::to_string(lock));
      drop_next_piece();
      check();
    }
  }

private:
  Random random_{GetParam().seed};
};

TEST_P(RandomGameTest, NoFullRowRemainsAfterALock) {
  after_each_lock([] { EXPECT_FALSE(has_full_row()) << board_text(); });
}

TEST_P(RandomGameTest, ABoardIsAlwaysFifteenByTenOrTenByFifteenWithKindsInItsCells) {
  after_each_lock([] {
    EXPECT_EQ(std::minmax(ROWS, COLS), std::minmax<int64_t>(10, 15));
    ASSERT_EQ(qor_array_len(BOARD.get()), ROWS);
    for (int64_t row = 0; row < ROWS; ++row) {
      const auto* cells = static_cast<const QorArray*>(qor_array_get_ptr(BOARD.get(), row));
      ASSERT_EQ(qor_array_len(cells), COLS);
      for (int64_t column = 0; column < COLS; ++column)
        EXPECT_TRUE(at(row, column) >= 0 && at(row, column) <= 12 &&
                    at(row, column) == std::floor(at(row, column)));
    }
  });
}

TEST_P(RandomGameTest, TheScoreNeverFallsAndRowsAndLevelAgree) {
  int64_t score = 0;
  int64_t rows = 0;
  after_each_lock([&] {
    EXPECT_GE(SCORE, score);
    EXPECT_EQ(LINESCLEARED, rows + CLEAREDTURN);
    EXPECT_EQ(LEVEL, LINESCLEARED / 10 + 1);
    score = GAMEOVER ? 0 : SCORE;
    rows = GAMEOVER ? 0 : LINESCLEARED;
  });
}

TEST_P(RandomGameTest, APlainLockAddsFourBlocksAndTakesTheClearedRows) {
  int plain_locks = 0;
  for (int lock = 0; lock < 400 && !HasFailure(); ++lock) {
    if (GAMEOVER)
      new_game();
    const int64_t before = blocks_on_board();
    const int64_t columns = COLS;
    const bool is_power_up = PIECECOLOR > 7;
    drop_next_piece();
    if (is_power_up || COLS != columns || GAMEOVER)
      continue; // a power-up takes more, a tip clears longer rows, the last piece may stick out
    ++plain_locks;
    EXPECT_EQ(blocks_on_board(), before + 4 - CLEAREDTURN * COLS);
  }
  EXPECT_GT(plain_locks, 200);
}

TEST_P(RandomGameTest, PoolsKeepTheirSizes) {
  fill_particle_pool(); // and nothing ages here: the others fill up
  after_each_lock([] {
    for (const auto& [pool, slots] : {std::pair{&POP_LIFE, NPOP}, std::pair{&PAR_LIFE, NPART},
                                      std::pair{&STR_LIFE, NSTREAK}, std::pair{&STAR_ON, NSTAR}})
      EXPECT_EQ(qor_array_len(pool->get()), slots);
    EXPECT_LE(std::ssize(stars()), NSTAR);
  });
}

TEST_P(RandomGameTest, TheRestAfterATipStaysWithinItsBounds) {
  after_each_lock([] {
    EXPECT_GE(REARMIN, 0);
    EXPECT_LE(REARMIN, 5);
    EXPECT_TRUE(KAVOARMED || REARMIN >= 1) << "a board that rests has locks to wait for";
  });
}

TEST_P(RandomGameTest, TheNewPieceEntersInTheMiddleAndOnlyACollisionEndsTheGame) {
  after_each_lock([] {
    EXPECT_EQ(PIECEX, COLS / 2 - 2);
    EXPECT_EQ(PIECEY, 0);
    EXPECT_EQ(GAMEOVER, run(CHECKCOLLISION(CURRENTPIECE, static_cast<double>(PIECEX), 0)) != 0.0);
  });
}

INSTANTIATE_TEST_SUITE_P(BothBoardsBothPlayers, RandomGameTest, ::testing::ValuesIn(many_games()));

// ---- whole runs of the program ------------------------------------------------------------------

class WholeRunTest : public GameTest {
protected:
  // Runs the program as a visitor uses it, with this chance.
  static void visit(Visitor& visitor, uint64_t chance_seed) {
    host().random_seed = chance_seed;
    host().on_frame = [&visitor] { host().keys = visitor.keys(); };
    std::string name = "kavo";
    char* arguments[] = {name.data(), nullptr};
    run(run_program(1, arguments));
  }

  WorkingFolder folder;
};

TEST_F(WholeRunTest, TwentyThousandFramesOfPlayLeaveAScoreFileThatReadsBack) {
  host().is_discarding = true;
  Visitor visitor(7, 20'000);
  visit(visitor, 7);
  EXPECT_GE(visitor.frames(), 20'000);
  EXPECT_TRUE(host().is_shut_down);
  EXPECT_EQ(visitor.screens(),
            (std::set<std::string>{"title", "options", "play", "pause", "enter"}));
  EXPECT_GE(visitor.games(), 3);
  ASSERT_GE(visitor.names(), 2);

  std::vector<std::pair<std::string, double>> shown;
  for (int64_t slot = 0; slot < 5; ++slot)
    shown.emplace_back(name_at(slot), score_at(slot));
  EXPECT_GT(shown.front().second, 0.0);
  EXPECT_TRUE(
      std::ranges::is_sorted(shown, std::greater(), &std::pair<std::string, double>::second));
  set_initial_values();
  run(LOADHIGH());
  for (int64_t slot = 0; slot < 5; ++slot)
    EXPECT_EQ(std::pair(name_at(slot), score_at(slot)), shown[slot]) << "slot " << slot;
}

TEST_F(WholeRunTest, TheSameChanceAndKeysGiveTheSameCommandsToTheByte) {
  std::vector<Trace> traces;
  for (const uint64_t chance_seed : {3, 3, 4}) {
    start_afresh();
    std::filesystem::remove_all("tmp");
    Visitor visitor(11, 400);
    visit(visitor, chance_seed);
    traces.push_back(new_trace());
  }
  EXPECT_GT(traces[0].size(), 100'000U);
  EXPECT_TRUE(same(traces[1], traces[0]));
  EXPECT_NE(traces[2], traces[0]) << "other chance must tell";
}

} // namespace
} // namespace kavo::test
