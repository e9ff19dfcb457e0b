// Bonus stars: where they appear and what collects them.
#include "game/playfield/locking.h"
#include "game/powerups/stars.h"
#include "game/program.h"
#include "tests/game/game_fixture.h"
#include "tests/game/pools.h"

namespace kavo::test {
namespace {

class StarTest : public GameTest {
protected:
  // Lets a star appear with these two draws.
  static void spawn(double row_draw, double column_draw) {
    host().chance = {row_draw, column_draw};
    run(SPAWNSTAR());
  }

  static std::vector<Star> spawned(double row_draw, double column_draw) {
    for (int64_t slot = 0; slot < NSTAR; ++slot)
      qor_array_set(STAR_ON.get(), slot, 0.0);
    spawn(row_draw, column_draw);
    return stars();
  }
};

// ---- appearing ----------------------------------------------------------------------------------

TEST_F(StarTest, OnTheTallBoardAStarAppearsInRowsTwoToNine) {
  EXPECT_EQ(spawned(0.0, 0.0), (std::vector<Star>{{2, 0}}));
  EXPECT_EQ(spawned(0.9999, 0.9999), (std::vector<Star>{{9, 9}}));
  EXPECT_EQ(spawned(0.5, 0.5), (std::vector<Star>{{5, 5}}));
}

TEST_F(StarTest, OnTheWideBoardAStarAppearsInRowsTwoToSix) {
  set_board_size(10, 15);
  EXPECT_EQ(spawned(0.0, 0.0), (std::vector<Star>{{2, 0}}));
  EXPECT_EQ(spawned(0.9999, 0.9999), (std::vector<Star>{{6, 14}}));
}

TEST_F(StarTest, AStarTakesTwoDraws) {
  spawn(0.5, 0.5);
  EXPECT_TRUE(same(new_trace(), {"RND i1", "RND i1"}));
}

TEST_F(StarTest, StarsTakeTheFirstFreeSlot) {
  put_star(0, 1, 1);
  put_star(2, 1, 1);
  spawn(0.0, 0.0);
  EXPECT_EQ(stars(), (std::vector<Star>{{1, 1}, {2, 0}, {1, 1}}));
}

TEST_F(StarTest, TheSixthStarStillFindsItsSlot) {
  for (int64_t slot = 0; slot < NSTAR - 1; ++slot)
    put_star(slot, slot, slot);
  spawn(0.0, 0.9999);
  EXPECT_EQ(std::ssize(stars()), NSTAR);
  EXPECT_EQ(stars().back(), (Star{2, 9}));
}

TEST_F(StarTest, WithSixStarsNoneIsAdded) {
  for (int64_t slot = 0; slot < NSTAR; ++slot)
    put_star(slot, slot, slot);
  const auto before = stars();
  spawn(0.0, 0.9999);
  EXPECT_EQ(stars(), before);
}

TEST_F(StarTest, OnAnOccupiedCellNoStarAppears) {
  put(2, 0);
  spawn(0.0, 0.0);
  EXPECT_TRUE(stars().empty());
  EXPECT_EQ(host().draws, 2) << "there is no second try";
}

TEST_F(StarTest, TwoStarsMayShareACell) {
  spawn(0.0, 0.0);
  spawn(0.0, 0.0);
  EXPECT_EQ(stars(), (std::vector<Star>{{2, 0}, {2, 0}}));
}

TEST_F(StarTest, AFailedDrawTakesNoSlot) {
  const auto commands =
      fail_each_command([] {},
                        [] {
                          run(SPAWNSTAR());
                          EXPECT_EQ(stars().empty(), host().commands < 2 || qor_err_code() != 0);
                        });
  EXPECT_EQ(commands, 2);
}

// ---- collecting ---------------------------------------------------------------------------------

TEST_F(StarTest, ABarAcrossTwoStarsCollectsBothInOneFrame) {
  put_star(0, 6, 4);
  put_star(1, 6, 5);
  hold(shape(i_piece), 1, 3, 5);
  run(COLLECTSTARS());
  EXPECT_EQ(SCORE, 500);
  EXPECT_TRUE(stars().empty());
}

TEST_F(StarTest, TwoStarsInOneCellAreBothCollected) {
  put_star(1, 6, 4);
  put_star(4, 6, 4);
  hold(shape(single_cell), 8, 3, 5);
  run(COLLECTSTARS());
  EXPECT_EQ(SCORE, 500);
  EXPECT_TRUE(stars().empty());
}

TEST_F(StarTest, OnlyOccupiedCellsOfThePieceCollect) {
  put_star(0, 5, 3); // an empty corner of the piece's matrix
  put_star(1, 6, 7);
  hold(shape(t_piece), 6, 3, 5);
  run(COLLECTSTARS());
  EXPECT_EQ(SCORE, 0);
  EXPECT_EQ(stars().size(), 2U);
  EXPECT_EQ(host().commands, 0);
}

TEST_F(StarTest, ACollectedStarPopsUpSparksAndRings) {
  BX = 150;
  BY = 80;
  put_star(3, 6, 4);
  hold(shape(single_cell), 8, 3, 5);
  host().chance = {0.0, 0.6, 0.0};
  run(COLLECTSTARS());
  EXPECT_EQ(popups(), (std::vector<Popup>{{150 + 4 * 36, 80 + 6 * 36, 250}}));
  const auto sparks = particles_of({250, 225, 90});
  ASSERT_EQ(sparks.size(), 14U);
  EXPECT_EQ(sparks.front().x, 150 + 4 * 36 + 18);
  EXPECT_EQ(sparks.front().y, 80 + 6 * 36 + 18);
  EXPECT_DOUBLE_EQ(sparks.front().vx, 5.0);
  EXPECT_TRUE(same(drawn(), joined({Trace(14 * 3, "RND 1"), {R"(SOUND.PLAY 4 "g4")"}})));
}

TEST_F(StarTest, StarsAreCollectedCellByCellAndThereInSlotOrder) {
  put_star(0, 6, 5);
  put_star(1, 6, 4);
  put_star(2, 6, 4);
  hold(shape(i_piece), 1, 3, 5);
  run(COLLECTSTARS());
  EXPECT_EQ(popups(), (std::vector<Popup>{{144, 216, 250}, {144, 216, 250}, {180, 216, 250}}));
}

TEST_F(StarTest, AStarBeyondTheEdgeOfATurnedBoardStaysAsItIs) {
  set_board_size(10, 15);
  put_star(0, 13, 3);
  hold(shape(i_piece), 1, 3, 5);
  run(COLLECTSTARS());
  EXPECT_EQ(stars(), (std::vector<Star>{{13, 3}}));
}

TEST_F(StarTest, WhicheverCommandFailsCollectingStopsThere) {
  const auto commands = fail_each_command(
      [] {
        put_star(0, 6, 4);
        put_star(1, 6, 5);
        hold(shape(i_piece), 1, 3, 5);
      },
      [] { run(COLLECTSTARS()); });
  EXPECT_EQ(commands, 2 * (14 * 3 + 1));
}

// ---- stars and the rest of the game -------------------------------------------------------------

TEST_F(StarTest, APieceLocksOverAStarWhichStays) {
  put_star(0, 14, 4);
  host().chance.assign(400, 0.9);
  NEXTPIECE = shape(t_piece);
  hold(shape(single_cell), 11, 3, 13);
  run(LOCKSEQUENCE());
  EXPECT_EQ(at(14, 4), 11.0);
  EXPECT_EQ(stars(), (std::vector<Star>{{14, 4}}));
}

TEST_F(StarTest, ARowClearMovesNoStar) {
  put_star(0, 10, 4);
  put_star(1, 14, 2);
  fill_row(14);
  host().chance.assign(400, 0.9);
  NEXTPIECE = shape(t_piece);
  hold(shape(o_piece), 4, 3, 5);
  run(LOCKSEQUENCE());
  EXPECT_EQ(stars(), (std::vector<Star>{{10, 4}, {14, 2}}));
}

TEST_F(StarTest, AHardDropCollectsNothingOnItsWayNorWhereItLands) {
  put_star(0, 8, 4);
  put_star(1, 14, 4);
  host().chance.assign(400, 0.9);
  NEXTPIECE = shape(t_piece);
  hold(shape(o_piece), 4, 3, 0);
  enter_state("play");
  host().keys = {"Space"};
  run(run_frame());
  EXPECT_EQ(stars().size(), 2U);
  EXPECT_EQ(SCORE, 5 + 20);
}

TEST_F(StarTest, APieceThatStepsOntoAStarCollectsItInThatFrame) {
  put_star(0, 5, 4);
  NEXTPIECE = shape(t_piece);
  hold(shape(single_cell), 11, 3, 3);
  enter_state("play");
  clock().now_ms = 600; // one interval after the last step
  run(run_frame());
  EXPECT_EQ(PIECEY, 4);
  EXPECT_TRUE(stars().empty());
  EXPECT_EQ(SCORE, 250);
}

} // namespace
} // namespace kavo::test
