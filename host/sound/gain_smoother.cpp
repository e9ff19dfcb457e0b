#include "host/sound/gain_smoother.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace kavo::sound {

namespace {

constexpr double unit = 1 << 30; // a reduction of 1

} // namespace

void GainSmoother::Box::prepare(int64_t size) {
  values_.assign(static_cast<size_t>(size), 0);
  position_ = 0;
  sum_ = 0;
}

GainSmoother::Fixed GainSmoother::Box::add(Fixed value) {
  sum_ += value - values_[position_];
  values_[position_] = value;
  position_ = position_ + 1 == values_.size() ? 0 : position_ + 1;
  return sum_;
}

// Two averages of (window + 1) / 2 frames reach over the window between them.
void GainSmoother::prepare(int64_t window, int64_t hold, int64_t release) {
  const int64_t half = (window + 1) / 2;
  window_ = 2 * half - 1;
  memory_ = window_ + hold;
  release_ = release;
  scale_ = 1.0 / (unit * static_cast<double>(half * half));
  held_ = 0;
  time_ = first_ = last_ = 0;
  candidates_.assign(std::bit_ceil(static_cast<size_t>(memory_) + 1), {});
  once_.prepare(half);
  twice_.prepare(half);
  frames_to_rest_ = window_ + memory_;
  frames_at_rest_ = frames_to_rest_;
}

// The sliding maximum of D. Lemire, "Streaming maximum-minimum filter using no more than three
// comparisons per element" (2006): what is smaller than the newest will never be the largest.
GainSmoother::Fixed GainSmoother::largest_of_late(Fixed reduction) {
  const auto at = [&](int64_t index) -> Candidate& {
    return candidates_[static_cast<size_t>(index) & (candidates_.size() - 1)];
  };
  while (last_ > first_ && at(last_ - 1).reduction <= reduction)
    --last_;
  at(last_++) = {time_, reduction};
  if (at(first_).time <= time_ - memory_)
    ++first_;
  ++time_;
  return at(first_).reduction;
}

float GainSmoother::next(float reduction) {
  const auto asked = static_cast<Fixed>(std::ceil(static_cast<double>(reduction) * unit));
  held_ -= (held_ + release_ - 1) / release_;
  held_ = std::max(held_, largest_of_late(asked));
  frames_at_rest_ = held_ == 0 ? frames_at_rest_ + 1 : 0;
  const Fixed smooth = twice_.add(once_.add(held_));
  return static_cast<float>(1.0 - static_cast<double>(smooth) * scale_);
}

} // namespace kavo::sound
