#include "host/sound/ducker.h"

#include <algorithm>

namespace kavo::sound {

namespace {

constexpr float depth = 1.0f - 0.70794578f; // 3 dB
constexpr double down_seconds = 0.010;
constexpr double up_seconds = 0.250;

// An effect as loud as this, 28 dB under a note of the game's, moves the music all the way; a
// softer one in proportion.
constexpr float audible = 0.02f;

} // namespace

void Ducker::prepare(int rate) {
  down_ = static_cast<float>(depth / (down_seconds * rate));
  up_ = static_cast<float>(depth / (up_seconds * rate));
  gain_ = 1.0f;
}

float Ducker::next_gain(float presence) {
  const float target = 1.0f - depth * std::min(1.0f, presence / audible);
  gain_ = target < gain_ ? std::max(target, gain_ - down_) : std::min(target, gain_ + up_);
  return gain_;
}

void Ducker::process(const float* presence, float* left, float* right, int64_t frames) {
  const bool is_away =
      gain_ == 1.0f && std::all_of(presence, presence + frames, [](float p) { return p == 0.0f; });
  for (int64_t i = 0; i < frames && !is_away; ++i) {
    const float gain = next_gain(presence[i]);
    left[i] *= gain;
    right[i] *= gain;
  }
}

} // namespace kavo::sound
