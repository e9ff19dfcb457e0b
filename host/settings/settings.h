// What a player may set, for all games to come: how loud, how calm, in which language.
#pragma once

#include <cstdint>

namespace kavo::host {

enum class Language : uint8_t { automatic, english, german };

struct Settings {
  int music = 100;   // percent of its full loudness
  int effects = 100; // percent
  bool is_calm = false;
  bool waits = true;   // while its player is elsewhere
  bool records = true; // keeps the last games
  Language language = Language::automatic;

  bool operator==(const Settings&) const = default;
};

// The bounds of a number, and by how much one step changes it.
struct Bounds {
  int least;
  int most;
  int step;
};

inline constexpr Bounds volume_bounds = {0, 100, 5}; // percent

} // namespace kavo::host
