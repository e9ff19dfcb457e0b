// Turns how far each frame must be turned down into how far it is: the largest of the frames ahead,
// held for as long as a low note takes to come round again, let go slowly, and rounded off, so that
// the level moves without a corner, is down in time, and does not follow the waves themselves.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace kavo::sound {

class GainSmoother {
public:
  // The gain for a frame comes `window` - 1 frames after what was asked for it; `window` is odd.
  // A peak counts for `hold` frames more; then the gain comes back, by 1 - 1/e in `release` frames.
  void prepare(int64_t window, int64_t hold, int64_t release);

  // `reduction` is what the gain of the newest frame must at least fall short of 1 by. Gives the
  // gain of the frame that was the newest `window` - 1 frames ago.
  float next(float reduction);

  // True when the gain is 1 and remains 1 unless more is asked for.
  bool is_at_rest() const { return frames_at_rest_ >= frames_to_rest_; }

private:
  // Sums of integers come back to exactly zero, whatever went through them.
  using Fixed = int64_t;

  // A sum of the last `size` values.
  class Box {
  public:
    void prepare(int64_t size);
    Fixed add(Fixed value);

  private:
    std::vector<Fixed> values_;
    size_t position_ = 0;
    Fixed sum_ = 0;
  };

  Fixed largest_of_late(Fixed reduction);

  int64_t window_ = 1;
  int64_t memory_ = 1; // frames for which a reduction counts
  Fixed release_ = 1;
  double scale_ = 1.0;
  int64_t time_ = 0;
  Fixed held_ = 0;
  int64_t frames_at_rest_ = 0;
  int64_t frames_to_rest_ = 0;

  // Candidates for the largest of late, falling: a ring, as long as a power of two.
  struct Candidate {
    int64_t time = 0;
    Fixed reduction = 0;
  };
  std::vector<Candidate> candidates_;
  int64_t first_ = 0; // counts on, round and round the ring
  int64_t last_ = 0;  // one past the newest
  Box once_;
  Box twice_;
};

} // namespace kavo::sound
