// How much of a filmed game flashes.
#pragma once

#include <cstdint>

#include "tests/film/player.h"

namespace kavo::film {

// The most in any second, by the guidelines' count; see flash_meter.h.
struct Most {
  int general = 0;
  int red = 0;
};

struct Flashes {
  bool has_ended_well = false;
  double seconds = 0; // of play
  Most all;
  Most at_rest;     // without the pictures of a board that tips or shakes
  int too_many = 0; // times that more than three general flashes came together
};

// Lets the player play for so many frames, whole games after each other.
Flashes flashes_of_play(Player player, int seed, int64_t frames);

} // namespace kavo::film
