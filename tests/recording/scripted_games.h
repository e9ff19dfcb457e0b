// Games that players of code play for the recordings in games/, which every build plays again.
//
// Who changes what the game draws or does makes them anew, and looks at what has changed:
//   KAVO_UPDATE_GOLDEN=1 build/asan/bin/recording_tests --gtest_filter='RecordedGames.*'
//   KAVO_UPDATE_GOLDEN=1 build/asan/bin/recording_stage_tests --gtest_filter='Pictures*'
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "tests/game/players.h"

namespace kavo::test {

struct ScriptedGame {
  std::string name;
  uint64_t seed; // of chance
  // Of the pieces: how each is placed.
  std::function<std::unique_ptr<Player>()> player;
  int64_t careful_frames;        // after which the player only drops pieces
  int64_t rank = 0;              // in the table of scores that the game is to reach
  int64_t rows_before = 0;       // that count as cleared when it begins
  bool has_uneven_clock = false; // as a system's
};

const std::vector<ScriptedGame>& scripted_games();

// The bytes of the game's file, uncompressed: builds without zlib read it, too.
std::string record(const ScriptedGame& game);

} // namespace kavo::test
