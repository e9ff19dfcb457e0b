// How evenly the game's frames come, beside frames that cost nothing.
#pragma once

#include <chrono>
#include <functional>
#include <vector>

#include "bench/desktop/game_on_desktop.h"

namespace kavo::bench {

// Plays for so long, and gives all intervals between the game's frames meanwhile, in seconds.
// `at_frame` is called after each.
std::vector<double> played_intervals(
    GameOnDesktop& game, std::chrono::duration<double> time,
    const std::function<void()>& at_frame = [] {});

struct Pacing {
  std::vector<double> game;   // intervals between its frames while it is played
  std::vector<double> work;   // what its main thread took of a processor in each of them, seconds
  std::vector<double> bare;   // at the same time, on the same X server
  double others_part_of_time; // processor time of all but the two, the server and this program,
                              // as a part of all processors' time
};
Pacing measure_pacing(GameOnDesktop& game, std::chrono::duration<double> time);

} // namespace kavo::bench
