// What a player may set, for all games to come: how loud, how calm, in which language, with which
// keys.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace kavo::host {

enum class Language : uint8_t { automatic, english, german };

// The ten things that a player can do, in the order in which the game asks for their keys.
enum class Action : uint8_t {
  left,
  right,
  turn,
  down,
  drop,
  accept,
  pause,
  options,
  music,
  leave,
};
inline constexpr size_t action_count = 10;

// By which names the settings call them.
std::string_view name_of(Action action);

// The names of two keys and of two buttons of a controller; empty where there is none. Keys are
// named by the platform, buttons as host/buttons.h has them.
struct Choice {
  std::array<std::string, 2> keys;
  std::array<std::string, 2> buttons;

  bool operator==(const Choice&) const = default;
};

using Choices = std::array<Choice, action_count>; // by Action

// What the game has always answered to. The cross and the left stick need no choice: they steer
// where the player has not chosen otherwise.
Choices usual_choices();

struct Settings {
  int music = 100;   // percent of its full loudness
  int effects = 100; // percent
  bool is_calm = false;
  bool waits = true;    // while its player is elsewhere
  bool repeats = false; // Left and Right while they are held
  int repeat_delay_ms = 200;
  int repeat_interval_ms = 60;
  Language language = Language::automatic;
  Choices choices = usual_choices();

  bool operator==(const Settings&) const = default;
};

// The bounds of a number, and by how much one step changes it.
struct Bounds {
  int least;
  int most;
  int step;
};

inline constexpr Bounds volume_bounds = {0, 100, 5};            // percent
inline constexpr Bounds repeat_delay_bounds = {100, 400, 20};   // ms
inline constexpr Bounds repeat_interval_bounds = {30, 120, 10}; // ms

} // namespace kavo::host
