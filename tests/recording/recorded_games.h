// Games that a player made of code plays on the recording host, and their recordings.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "recording/recorder.h"
#include "tests/game/players.h"

namespace kavo::test {

// Keeps recordings in memory.
class Shelf {
public:
  recording::OpenSink opener();

  std::vector<std::string> files;
  int64_t bytes_before_failure = -1; // of a file; below 0: never
  int finished = 0;
  std::function<void()> on_begin = [] {};
  std::function<void()> on_finish = [] {};
};

// Runs the whole program on the recording host with this player at the keyboard, and records.
// What the system is asked to tell the player goes to `told`.
void play_and_record(Player& player, Shelf& shelf, std::vector<std::string>& told);

// A clock whose readings are no multiples of anything, and never alike.
void let_clock_run_unevenly();

} // namespace kavo::test
