#include "host/sound/early_reflections.h"

#include <algorithm>
#include <bit>

namespace kavo::sound {

namespace {

using Echoes = std::array<double, 6>;

constexpr Echoes left_ms = {4.03, 17.78, 25.03, 36.11, 45.98, 54.61};
constexpr Echoes right_ms = {10.24, 20.15, 32.49, 42.28, 50.98, 59.53};

// A little softer from one to the next, as the way grows longer.
constexpr std::array<float, 6> gains = {0.60f, -0.52f, 0.45f, -0.39f, 0.34f, -0.29f};

size_t frames_in(double milliseconds, int rate) {
  return std::max<size_t>(1, static_cast<size_t>(milliseconds * rate / 1000.0));
}

} // namespace

void EarlyReflections::prepare(int rate) {
  for (size_t i = 0; i < echoes; ++i) {
    left_frames_[i] = frames_in(left_ms[i], rate);
    right_frames_[i] = frames_in(right_ms[i], rate);
  }
  past_.assign(std::bit_ceil(right_frames_.back() + 1), 0.0f);
  position_ = 0;
}

void EarlyReflections::process(float in, float& left, float& right) {
  const size_t last = past_.size() - 1; // a power of two less one
  past_[position_] = in;
  left = right = 0.0f;
  for (size_t i = 0; i < echoes; ++i) {
    left += gains[i] * past_[(position_ - left_frames_[i]) & last];
    right += gains[i] * past_[(position_ - right_frames_[i]) & last];
  }
  position_ = (position_ + 1) & last;
}

} // namespace kavo::sound
