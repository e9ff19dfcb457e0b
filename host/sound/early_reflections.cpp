#include "host/sound/early_reflections.h"

#include <algorithm>

namespace kavo::sound {

namespace {

using Echoes = std::array<double, 6>;

constexpr Echoes left_ms = {4.03, 17.78, 25.03, 36.11, 45.98, 54.61};
constexpr Echoes right_ms = {10.24, 20.15, 32.49, 42.28, 50.98, 59.53};

// A little softer from one to the next, as the way grows longer.
constexpr std::array<float, 6> gains = {0.60f, -0.52f, 0.45f, -0.39f, 0.34f, -0.29f};

int64_t frames_in(double milliseconds, int rate) {
  return std::max<int64_t>(1, static_cast<int64_t>(milliseconds * rate / 1000.0));
}

} // namespace

void EarlyReflections::prepare(int rate) {
  for (size_t i = 0; i < echoes; ++i) {
    left_frames_[i] = frames_in(left_ms[i], rate);
    right_frames_[i] = frames_in(right_ms[i], rate);
  }
  longest_ = right_frames_.back();
  past_.assign(static_cast<size_t>(4 * longest_ + longest_run), 0.0f);
  end_ = longest_;
}

void EarlyReflections::process(const float* in, float gain, float* left, float* right,
                               int64_t frames) {
  if (end_ + frames > std::ssize(past_)) {
    std::copy(past_.begin() + end_ - longest_, past_.begin() + end_, past_.begin());
    end_ = longest_;
  }
  std::copy_n(in, frames, past_.begin() + end_);
  for (size_t i = 0; i < echoes; ++i) {
    add_echo(left_frames_[i], gain * gains[i], left, frames);
    add_echo(right_frames_[i], gain * gains[i], right, frames);
  }
  end_ += frames;
}

void EarlyReflections::add_echo(int64_t delay, float gain, float* side, int64_t frames) const {
  const float* then = past_.data() + end_ - delay;
  for (int64_t i = 0; i < frames; ++i)
    side[i] += gain * then[i];
}

} // namespace kavo::sound
