// Games that a player made of code plays on the recording host, and their recordings.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "recording/recorder.h"
#include "runtime/clock.h"
#include "tests/game/players.h"

namespace kavo::test {

// Keeps recordings in memory.
class Shelf {
public:
  recording::OpenSink opener();

  std::vector<std::string> files;
  int64_t bytes_before_failure = -1; // of a file; below 0: never
  int finished = 0;
  std::function<void()> after_frame = [] {}; // before the recorder looks
  std::function<void()> on_begin = [] {};
  std::function<void()> on_finish = [] {};
};

// Runs the whole program on the recording host with this player at the keyboard, and records.
// What the system is asked to tell the player goes to `told`.
void play_and_record(Player& player, Shelf& shelf, std::vector<std::string>& told);

// A clock that sleeping moves on, in no time: evenly, and only then; or so that its readings are
// no multiples of anything and never alike, as a system's. Until the object ends.
class PlayersClock {
public:
  explicit PlayersClock(bool is_uneven);
  ~PlayersClock();
  PlayersClock(const PlayersClock&) = delete;
  PlayersClock& operator=(const PlayersClock&) = delete;

private:
  struct Time;
  std::unique_ptr<Time> time_;
  qor_clock before_;
};

} // namespace kavo::test
