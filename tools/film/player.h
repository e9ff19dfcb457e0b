// A player that knows the board and presses keys.
#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "host/input.h"

namespace kavo::film {

// What the player thinks of a placement, points for each: the better, the higher.
struct Taste {
  double cleared_row = 8;
  double hole = -7;
  double height = -1; // of every column, in cells
  double pull = 0;    // of the board to either side; positive looks for tips
};

class Player {
public:
  // Presses a key at most every so many frames: 2 is as fast as the game can tell keys apart, 10 a
  // person's pace.
  Player(Taste taste, int frames_for_a_key) : taste_(taste), frames_for_a_key_(frames_for_a_key) {}

  // Presses or releases a key, whatever the screen asks for. After leave() that is Escape, until
  // the game has ended.
  void act(host::EventSink& sink);
  void leave() { is_leaving_ = true; }

private:
  using Shape = std::array<std::array<bool, 4>, 4>;
  struct Plan {
    int turns;
    int column;
  };

  std::string_view next_key();
  std::string_view next_move();
  Plan best_plan() const;
  double worth_of(const Shape& shape, int column) const;

  Taste taste_;
  int frames_for_a_key_;
  int frames_to_wait_ = 0;
  bool is_leaving_ = false;
  bool has_plan_ = false;
  Plan plan_{};
  int moves_left_ = 0; // sideways, before the player gives up on a blocked way
  std::string_view held_;
};

} // namespace kavo::film
