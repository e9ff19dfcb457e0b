// How much of a filmed game flashes.
#pragma once

#include <cstdint>
#include <vector>

#include "tests/film/player.h"

namespace kavo::film {

struct Flashes {
  bool has_ended_well = false;
  double seconds = 0; // of play
  std::vector<double> general_ms;
  std::vector<double> red_ms;
  // The same without those of a board that tips or shakes.
  std::vector<double> general_ms_at_rest;
  std::vector<double> red_ms_at_rest;
};

// Lets the player play for so many frames, whole games after each other.
Flashes flashes_of_play(Player player, int seed, int64_t frames);

} // namespace kavo::film
