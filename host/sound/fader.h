// A level that moves in a straight line and arrives exactly.
#pragma once

#include <cstdint>

namespace kavo::sound {

class Fader {
public:
  explicit Fader(float level = 0.0f) : from_(level), to_(level) {}

  // Moves to `target` within `frames` frames, from wherever it stands; at once when 0.
  void move(float target, int64_t frames) {
    from_ = level();
    to_ = target;
    position_ = 0;
    length_ = frames;
  }

  // From the position, never by adding steps: the value does not depend on how a block is cut.
  float level() const {
    if (position_ >= length_)
      return to_;
    return from_ + (to_ - from_) * (static_cast<float>(position_) / static_cast<float>(length_));
  }

  // Arrives at once.
  void settle() { position_ = length_; }

  bool is_moving() const { return position_ < length_; }
  bool is_shut() const { return !is_moving() && to_ == 0.0f; }

  // The level of the current frame; then one frame on.
  float next() {
    const float now = level();
    skip(1);
    return now;
  }
  void skip(int64_t frames) {
    if (is_moving())
      position_ += frames;
  }

  // Scales `frames` samples in place.
  void scale(float* samples, int64_t frames) {
    for (; frames > 0 && is_moving(); --frames)
      *samples++ *= next();
    for (int64_t i = 0; i < frames; ++i)
      samples[i] *= to_;
  }

  // Adds `frames` scaled samples to `mix`.
  void add_scaled(float* mix, const float* in, int64_t frames) {
    for (; frames > 0 && is_moving(); --frames)
      *mix++ += *in++ * next();
    for (int64_t i = 0; i < frames; ++i)
      mix[i] += in[i] * to_;
  }

private:
  float from_;
  float to_;
  int64_t position_ = 0;
  int64_t length_ = 0;
};

} // namespace kavo::sound
