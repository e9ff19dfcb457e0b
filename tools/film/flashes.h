// How much of a filmed game flashes.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "tools/film/player.h"

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

// In a window of one size.
struct Flashing {
  MostOfEach all;
  MostOfEach at_rest; // without the pictures of a board that tips or shakes
  Most too_many;      // times that more than three general flashes came together
};

struct FilmedPlay {
  bool has_ended_well = false;
  double seconds = 0;
  int tips = 0;                 // of the board
  int shakes = 0;               // without a tip
  std::vector<Flashing> scales; // one for each that was asked for
};

// Lets the player play for so many frames, whole games after each other, in windows of which each
// pixel is so large; see flash_meter.h. With a share, on a calm display (calm_display.h), where
// the board is never at rest for sure: nothing is counted for that.
FilmedPlay film_play(Player player, int seed, int64_t frames, const std::vector<double>& scales,
                     std::optional<int> calm_share = {});

} // namespace kavo::film
