// A key of a direction that is held and reads as pressed again and again, for players who want it.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "host/key_names.h"
#include "host/keyboard.h"

namespace kavo::host {

// In milliseconds. Two pictures are needed for each press: one in which the key is up.
struct RepeatTimes {
  int delay; // until the first press of the key's own
  int rate;  // from one to the next
};

class HeldRepeat {
public:
  HeldRepeat(Keyboard& keyboard, KeyNames& names) : keyboard_(keyboard), names_(names) {}

  // Nothing: a key that is held is one press.
  void set_times(std::optional<RepeatTimes> times);

  // Before a frame's first question for a key. Of two directions that are held the one that was
  // pressed later repeats. What was missed while no key was asked for is not made up for.
  void tend(double now_ms);

private:
  struct Direction {
    std::array<const char*, 2> names; // of the keys that steer there
    bool is_down = false;             // when it was last looked at
  };

  bool is_down(const Direction& direction);
  void look_at(Direction& direction, double now_ms);
  void start(Direction* direction, double now_ms);
  void press_again(const Direction& direction);

  Keyboard& keyboard_;
  KeyNames& names_;
  std::optional<RepeatTimes> times_;
  std::array<Direction, 2> directions_ = {{{{"Left", "A"}}, {{"Right", "D"}}}};
  Direction* repeated_ = nullptr;
  double due_ms_ = 0;
};

} // namespace kavo::host
