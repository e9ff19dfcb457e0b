// The fixed scenes: the board that each builds, what it draws, saves and prints.
#include <cmath>

#include "game/board/pull.h"
#include "game/playfield/lean.h"
#include "game/playfield/movement.h"
#include "game/playfield/pieces.h"
#include "game/presentation/effects.h"
#include "game/presentation/entry.h"
#include "game/presentation/frame.h"
#include "game/presentation/options.h"
#include "game/presentation/title.h"
#include "game/shell/scenes.h"
#include "tests/game/game_fixture.h"

namespace kavo::test {
namespace {

class ScenesTest : public GameTest {
protected:
  // As start-up leaves it: an empty board, a falling piece and a preview.
  static void arrange(const char* word) {
    start_afresh();
    run(ROLLNEXT());
    run(SPAWNPIECE());
    TESTTAB$ = copy(word);
    new_trace();
  }

  // Runs the scene and expects that it sends what `by_hand` sends and then ends the program's
  // sound and screen, printing this line.
  template<typename ByHand>
  static void expect_scene(const char* word, const char* message, ByHand by_hand) {
    arrange(word);
    by_hand();
    const Trace expected = joined({new_trace(), {"SOUND.SHUTDOWN", "GFX.CLOSE"}});
    const double slept = clock().slept_ms;
    arrange(word);
    ::testing::internal::CaptureStdout();
    run(run_scene());
    EXPECT_EQ(::testing::internal::GetCapturedStdout(), std::string(message) + "\n");
    EXPECT_TRUE(same(new_trace(), expected));
    EXPECT_EQ(clock().slept_ms, slept);
    EXPECT_FALSE(host().is_shut_down);
  }

  static void draw_twice() {
    run(DRAW());
    qor_sleep(30);
    run(DRAW());
  }

  template<typename Draw>
  static void present_twice(Draw draw) {
    run(draw());
    run(command::screen_flip());
    qor_sleep(30);
    run(draw());
    run(command::screen_flip());
  }

  static void save(const char* path) { run(command::save_screenshot(path)); }

  static void set_star(int64_t slot, double row, double column) {
    qor_array_set(STAR_ON.get(), slot, 1);
    qor_array_set(STAR_R.get(), slot, row);
    qor_array_set(STAR_C.get(), slot, column);
  }
};

TEST_F(ScenesTest, KavoTipsALopsidedBoard) {
  expect_scene("kavo", "kavo shots saved", [] {
    for (int64_t row = 9; row <= 14; ++row)
      for (int64_t column = 6; column <= 9; ++column)
        put(row, column, static_cast<double>(row % 3 + 3));
    put(14, 0, 5);
    put(14, 1, 5);
    put(12, 7, 0);
    put(13, 8, 0);
    put(11, 9, 0);
    EXPECT_GT(run(TORQUE()), 40);
    draw_twice();
    save("tmp/kavo_before.png");
    run(APPLYKAVO());
    EXPECT_EQ(ROWS, 10);
    draw_twice();
    save("tmp/kavo_after.png");
  });
  EXPECT_EQ(ROWS, 10);
  EXPECT_EQ(COLS, 15);
}

TEST_F(ScenesTest, PopShowsTwoPopupsAfterTenFrames) {
  expect_scene("pop", "pop shot saved", [] {
    put(14, 4, 6);
    put(14, 5, 6);
    run(DRAW());
    run(ADDPOPUP(BX + 144, BY + 396, 25));
    run(ADDPOPUP(BX + 216, BY + 288, 400));
    for (int frame = 0; frame < 10; ++frame) {
      run(DRAW());
      qor_sleep(20);
    }
    save("tmp/kavo_pop.png");
  });
}

TEST_F(ScenesTest, PuDropsABombOnABoardWithEverySpecialPiece) {
  expect_scene("pu", "pu shots saved", [] {
    for (int64_t column = 3; column <= 6; ++column) {
      put(14, column, 3);
      put(13, column, 4);
      put(12, column, 5);
    }
    put(14, 0, 8);
    put(14, 1, 9);
    put(14, 8, 10);
    put(13, 0, 11);
    put(13, 1, 12);
    set_star(0, 5, 7);
    set_star(1, 4, 2);
    hold(shape(single_cell), 8, 3, 1);
    draw_twice();
    save("tmp/pu_before.png");
    run(HARDDROP());
    draw_twice();
    save("tmp/pu_after.png");
  });
}

TEST_F(ScenesTest, StormScattersBlocksByChance) {
  expect_scene("storm", "storm shot saved", [] {
    for (int64_t row = 1; row <= 14; ++row)
      for (int64_t column = 0; column < 10; ++column)
        if (run(command::rnd(1)) < 0.6)
          put(row, column, std::floor(run(command::rnd(1)) * 5) + 2);
    LIGHTNING = 3;
    BOLTX = 300;
    draw_twice();
    save("tmp/kavo_storm.png");
  });
  EXPECT_EQ(LIGHTNING, 1) << "the bolt is lit in both frames and once more";
  EXPECT_GT(blocks_on_board(), 50);
  EXPECT_EQ(board_text().substr(0, 11), "..........\n");
}

TEST_F(ScenesTest, AStormCellIsFilledBelowSixInTenWithAKindFromTwoToSix) {
  arrange("storm");
  host().chance = {0.6, 0.5999, 0.0, 0.5999, 0.9999};
  run(run_scene());
  EXPECT_EQ(at(1, 0), 0);
  EXPECT_EQ(at(1, 1), 2);
  EXPECT_EQ(at(1, 2), 6);
}

TEST_F(ScenesTest, QbombDropsABombOnABoardThatLiesOnItsSide) {
  expect_scene("qbomb", "qbomb done", [] {
    const Array zero = numbers({0});
    const Array sizes = numbers({10, 15});
    ROWS = 10;
    COLS = 15;
    BOARD = run(command::reshape(zero.get(), sizes.get()));
    for (int64_t column = 4; column <= 9; ++column) {
      put(9, column, 3);
      put(8, column, 4);
    }
    hold(shape(single_cell), 8, 5, 1);
    draw_twice();
    save("tmp/q_before.png");
    run(HARDDROP());
    draw_twice();
    save("tmp/q_after.png");
  });
}

TEST_F(ScenesTest, TitleShowsATableWithFourNames) {
  expect_scene("title", "title shot", [] {
    const std::pair<const char*, double> entries[] = {
        {"JON", 12000}, {"ABE", 8400}, {"ZED", 5000}, {"QUI", 1200}, {"---", 0}};
    int64_t slot = 0;
    for (const auto& [name, score] : entries) {
      put_text(HS_NAME.get(), slot, name);
      qor_array_set(HS_SCORE.get(), slot++, score);
    }
    present_twice(DRAWTITLE);
    save("tmp/kavo_title.png");
  });
}

TEST_F(ScenesTest, OptsShowsTheOptionsAsTheyAre) {
  expect_scene("opts", "opts shot", [] {
    present_twice(DRAWOPTIONS);
    save("tmp/kavo_opts.png");
  });
}

TEST_F(ScenesTest, EnterShowsKavWithItsSecondLetterSelected) {
  expect_scene("enter", "enter shot", [] {
    SCORE = 9999;
    ENTERNAME = numbers({10, 0, 21});
    ENTERPOS = 1;
    present_twice(DRAWENTER);
    save("tmp/kavo_enter.png");
  });
  arrange("enter");
  run(run_scene());
  const Trace trace = drawn();
  for (const char* line : {R"(TEXT 180 290 "K")", R"(TEXT 240 290 "A")", R"(TEXT 300 290 "V")",
                           R"(TEXT 150 200 "Punkte: 9999")"})
    EXPECT_TRUE(contains(trace, line)) << line;
}

TEST_F(ScenesTest, WithoutAWordTheDefaultSceneIsShown) {
  const auto by_hand = [] {
    const std::initializer_list<std::tuple<int, int, int>> cells = {
        {14, 0, 3}, {14, 1, 3}, {14, 2, 4}, {14, 3, 4}, {14, 5, 5}, {14, 6, 5},
        {14, 7, 2}, {13, 0, 3}, {13, 3, 4}, {13, 6, 5}, {13, 7, 2}, {12, 7, 1}};
    for (const auto& [row, column, kind] : cells)
      put(row, column, kind);
    hold(shape({".#..", "###."}), 6, 4, 1);
    for (int frame = 0; frame < 4; ++frame) {
      run(DRAW());
      qor_sleep(30);
    }
    save("tmp/kavo.png");
  };
  expect_scene("", "shot saved", by_hand);
  expect_scene("nonsense", "shot saved", by_hand);
  expect_scene("KAVO", "shot saved", by_hand);
}

TEST_F(ScenesTest, NoSceneWritesTheHighScores) {
  for (const char* word : {"kavo", "pop", "pu", "storm", "qbomb", "title", "opts", "enter", ""}) {
    arrange(word);
    run(run_scene());
    EXPECT_EQ(host().count("BINWRITER"), 0) << word;
    EXPECT_EQ(host().count("GFX.KEYSTATE"), 0) << word;
  }
}

TEST_F(ScenesTest, AFailedScreenshotIsNotReportedAsSaved) {
  arrange("opts");
  host().fail_name = "GFX.SAVE_SCREENSHOT";
  ::testing::internal::CaptureStdout();
  run(run_scene());
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(take_error(), "GFX.SAVE_SCREENSHOT: failed on command");
}

} // namespace
} // namespace kavo::test
