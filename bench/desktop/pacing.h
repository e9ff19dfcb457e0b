// How evenly the game's frames come, beside frames that cost nothing.
#pragma once

#include "bench/desktop/game_on_desktop.h"

#include <chrono>
#include <vector>

namespace bench {

// All intervals between frames of the next so long time, in seconds.
std::vector<double> frame_intervals(FrameWatch& watch, std::chrono::duration<double> time);

// Plays for so long, and gives all intervals between the game's frames meanwhile.
std::vector<double> played_intervals(GameOnDesktop& game, std::chrono::duration<double> time);

struct Pacing {
  std::vector<double> game;   // intervals between its frames while it is played
  std::vector<double> bare;   // at the same time, on the same X server
  double others_part_of_time; // processor time of all but the two, the server and this program,
                              // as a part of all processors' time
};
Pacing measure_pacing(GameOnDesktop& game, std::chrono::duration<double> time);

} // namespace bench
