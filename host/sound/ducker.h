// Makes the music step back by 3 dB while an effect sounds: down within 10 ms, so that a very short
// effect moves it less, and up again within 250 ms, so slowly that effects in quick succession do
// not make it pump.
#pragma once

#include <cstdint>

namespace kavo::sound {

class Ducker {
public:
  void prepare(int rate);

  // Scales `left` and `right` by what the presence of the effects asks for. The gain is exactly 1
  // when they have been silent for long enough.
  void process(const float* presence, float* left, float* right, int64_t frames);

private:
  float next_gain(float presence);

  float down_ = 0.0f; // steps of the gain per frame
  float up_ = 0.0f;
  float gain_ = 1.0f;
};

} // namespace kavo::sound
