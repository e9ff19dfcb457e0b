// The controls of a game controller, by their places rather than by what is printed on them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kavo::host {

enum class Button : uint8_t {
  south,
  east,
  west,
  north,
  back,
  guide,
  start,
  left_shoulder,
  right_shoulder,
  left_trigger,
  right_trigger,
  left_stick, // pressed, not pushed
  right_stick,
  cross_up,
  cross_down,
  cross_left,
  cross_right,
  // The left stick, pushed. It always steers.
  stick_up,
  stick_down,
  stick_left,
  stick_right,
};
inline constexpr size_t button_count = 21;

// "south", "left shoulder", …
std::string_view name_of(Button button);

// Nothing when no button that a player may choose is called that: the guide button is the panel's,
// and the stick steers.
std::optional<Button> button_named(std::string_view name);

} // namespace kavo::host
