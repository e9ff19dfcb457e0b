// What a player may set, for all games to come: how loud, how calm, in which language, with which
// keys.
#pragma once

#include <cstdint>

#include "host/keys/bindings.h"

namespace kavo::host {

enum class Language : uint8_t { automatic, english, german };

struct Settings {
  int music = 100;   // percent of its full loudness
  int effects = 100; // percent
  bool is_calm = false;
  bool waits = true;   // while its player is elsewhere
  bool records = true; // keeps the last games
  Language language = Language::automatic;
  bool repeats = false;   // Left and Right, while they are held
  int repeat_delay = 200; // milliseconds
  int repeat_rate = 50;   // milliseconds
  Bindings bindings = {};

  bool operator==(const Settings&) const = default;
};

// The bounds of a number, and by how much one step changes it.
struct Bounds {
  int least;
  int most;
  int step;
};

inline constexpr Bounds volume_bounds = {0, 100, 5};          // percent
inline constexpr Bounds repeat_delay_bounds = {100, 400, 20}; // milliseconds
inline constexpr Bounds repeat_rate_bounds = {30, 120, 10};   // milliseconds

} // namespace kavo::host
