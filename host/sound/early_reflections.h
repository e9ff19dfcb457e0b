// The first echoes of a room, from its walls and its ceiling: six to each side, at times that have
// nothing in common, and with signs that alternate, so that the sides differ and their sum has no
// comb.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace kavo::sound {

class EarlyReflections {
public:
  // The most frames that can be processed at a time.
  static constexpr int64_t longest_run = 512;

  void prepare(int rate);

  // Adds what comes back of `in` to each side, times `gain`.
  void process(const float* in, float gain, float* left, float* right, int64_t frames);

private:
  static constexpr size_t echoes = 6; // a side

  void add_echo(int64_t delay, float gain, float* side, int64_t frames) const;

  // As long as the last echo is late and a good deal more, so that it is seldom moved.
  std::vector<float> past_;
  int64_t end_ = 0; // one past the newest
  int64_t longest_ = 0;
  std::array<int64_t, echoes> left_frames_{};
  std::array<int64_t, echoes> right_frames_{};
};

} // namespace kavo::sound
