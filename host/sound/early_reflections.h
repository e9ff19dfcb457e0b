// The first echoes of a room, from its walls and its ceiling: six to each side, at times that have
// nothing in common, and with signs that alternate, so that the sides differ and their sum has no
// comb.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace kavo::sound {

class EarlyReflections {
public:
  void prepare(int rate);

  // Takes the next sample and gives what comes back to each side.
  void process(float in, float& left, float& right);

private:
  static constexpr size_t echoes = 6; // a side

  // As long as the last echo is late, from the newest sample on backwards.
  std::vector<float> past_;
  size_t position_ = 0;
  std::array<size_t, echoes> left_frames_{};
  std::array<size_t, echoes> right_frames_{};
};

} // namespace kavo::sound
