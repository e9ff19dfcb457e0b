// The recordings in games/, played again by every build for every machine.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>

#include "game/board/kinds.h"
#include "recording/replay.h"
#include "tests/game/game_fixture.h"
#include "tests/recording/recorded_games.h"
#include "tests/recording/scripted_games.h"

namespace kavo::test {
namespace {

using recording::Recording;
using recording::Replay;
using recording::Standing;

bool is_to_be_made_anew() {
  const char* wish = std::getenv("KAVO_UPDATE_GOLDEN");
  return wish != nullptr && *wish != '\0';
}

std::string file_of(const ScriptedGame& game) {
  return std::string(KAVO_RECORDED_GAMES) + "/" + game.name + ".kavo";
}

// What happens in a game.
struct Events {
  std::set<int64_t> specials; // kinds of the pieces that fell
  std::set<int> tips;         // -1 to the left, 1 to the right
  std::set<int64_t> ranks;    // of names that were entered
  int64_t highest_level = 0;
};

// On which side of the board there is more.
int heavier_side() {
  int64_t sum = 0;
  for (int64_t row = 0; row < ROWS; ++row)
    for (int64_t column = 0; column < COLS; ++column)
      sum += is_occupied(BOARD.get(), row, column) ? 2 * column - (COLS - 1) : 0;
  return sum < 0 ? -1 : 1;
}

class RecordedGames : public GameTest {
protected:
  void SetUp() override {
    GameTest::SetUp();
    host().is_discarding = true;
  }
  static void play(const ScriptedGame& game, Events& events) {
    const Recording recording = recording::parsed(read_file(file_of(game)));
    EXPECT_TRUE(recording.is_complete) << recording.damage;
    Replay replay(recording);
    Standing standing = Standing::playing;
    while (standing == Standing::playing) {
      const int side = heavier_side();
      const int64_t rows = ROWS;
      standing = replay.play_frame();
      if (ROWS != rows)
        events.tips.insert(side);
      if (PIECECOLOR >= kind::first_special)
        events.specials.insert(PIECECOLOR);
      if (state_is("enter"))
        events.ranks.insert(ENTERRANK);
      events.highest_level = std::max(events.highest_level, LEVEL);
    }
    EXPECT_EQ(standing, Standing::as_recorded) << "frame " << replay.progress().frames + 1;
    EXPECT_EQ(replay.progress(), recording.last);
  }
};

TEST_F(RecordedGames, EndAsRecordedOnEveryMachineAndHoldWhatCanHappen) {
  Events events;
  for (const ScriptedGame& game : scripted_games()) {
    SCOPED_TRACE(game.name);
    if (is_to_be_made_anew())
      write_file(file_of(game), record(game));
    play(game, events);
  }
  EXPECT_EQ(events.specials, (std::set<int64_t>{kind::bomb, kind::cross_line, kind::coin,
                                                kind::heavy, kind::row_filler}));
  EXPECT_EQ(events.tips, (std::set<int>{-1, 1}));
  EXPECT_EQ(events.ranks, (std::set<int64_t>{0, 1, 2, 3, 4}));
  EXPECT_GE(events.highest_level, 15);
}

// Who plays the same game today records the same bytes.
TEST_F(RecordedGames, AreRecordedThatWayStill) {
  const ScriptedGame& game = scripted_games().front();
  EXPECT_TRUE(record(game) == read_file(file_of(game)));
}

} // namespace
} // namespace kavo::test
