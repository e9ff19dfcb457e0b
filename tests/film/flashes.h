// How much of a filmed game flashes.
#pragma once

#include <cstdint>

#include "tests/film/player.h"

namespace kavo::film {

// The most flashes in any second, by the two readings of flash_meter.h.
struct Most {
  int overlapping = 0;
  int in_step = 0;
};

struct MostOfEach {
  Most general;
  Most red;
};

struct Flashes {
  bool has_ended_well = false;
  double seconds = 0; // of play
  int tips = 0;       // of the board
  int shakes = 0;     // without a tip
  MostOfEach all;
  MostOfEach at_rest; // without the pictures of a board that tips or shakes
  Most too_many;      // times that more than three general flashes came together
};

// Lets the player play for so many frames, whole games after each other, in a window whose pixels
// are so large; see flash_meter.h.
Flashes flashes_of_play(Player player, int seed, int64_t frames, double scale = 1);

} // namespace kavo::film
