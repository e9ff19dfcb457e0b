// A high-pass at 5 Hz, which takes away what moves the loudspeaker but is not heard. It stands
// before the gain of a voice: behind it, it would go on moving when the gain has reached zero.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

namespace kavo::sound {

class DcBlocker {
public:
  void prepare(int rate) {
    pole_ = 1.0 - 2.0 * std::numbers::pi * 5.0 / rate;
    last_in_ = last_out_ = 0.0;
  }

  // In place.
  void process(float* samples, int64_t frames) {
    for (int64_t i = 0; i < frames; ++i) {
      const double in = samples[i];
      last_out_ = in - last_in_ + pole_ * last_out_;
      if (std::abs(last_out_) < inaudible)
        last_out_ = 0.0;
      last_in_ = in;
      samples[i] = static_cast<float>(last_out_);
    }
  }

  // True when silence in gives silence out.
  bool is_at_rest() const { return last_in_ == 0.0 && last_out_ == 0.0; }

private:
  static constexpr double inaudible = 1e-10; // -200 dBFS

  // In double: the pole is so close to 1 that a float would hear its own rounding.
  double pole_ = 0.0;
  double last_in_ = 0.0;
  double last_out_ = 0.0;
};

} // namespace kavo::sound
