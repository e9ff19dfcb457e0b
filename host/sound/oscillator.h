// Reads a wave table at a steady pitch. The phase is a 32-bit integer, a whole turn is 2^32: it
// wraps by itself and never drifts.
#pragma once

#include <cmath>
#include <cstdint>

#include "host/sound/wavetable.h"

namespace kavo::sound {

class Oscillator {
public:
  // From phase 0. `frequency` is a fraction of the sample rate, below 0.5.
  void start(const WavetableBank& bank, Waveform waveform, double frequency) {
    start(bank.table(waveform, frequency), frequency);
  }

  void start(const Wavetable& table, double frequency) {
    samples_ = table.samples;
    shift_ = 32 - table.bits;
    phase_ = 0;
    step_ = static_cast<uint32_t>(std::llround(frequency * 4294967296.0));
  }

  void process(float* out, int64_t frames) {
    const uint32_t below = (uint32_t{1} << shift_) - 1;
    const float scale = 1.0f / static_cast<float>(uint32_t{1} << shift_);
    uint32_t phase = phase_;
    for (int64_t i = 0; i < frames; ++i) {
      const float* sample = samples_ + (phase >> shift_);
      const float between = static_cast<float>(static_cast<int32_t>(phase & below)) * scale;
      out[i] = sample[0] + (sample[1] - sample[0]) * between;
      phase += step_;
    }
    phase_ = phase;
  }

private:
  const float* samples_ = nullptr;
  int shift_ = 0;
  uint32_t phase_ = 0;
  uint32_t step_ = 0;
};

} // namespace kavo::sound
