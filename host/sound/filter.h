// A two-pole low-pass of Butterworth slope (Q = 0.7071), in the topology-preserving state-variable
// form: A. Simper, "Linear trapezoidal integrated SVF" (2013).
#pragma once

#include <cstdint>

#include "host/sound/fader.h"

namespace kavo::sound {

class LowPassFilter {
public:
  void prepare(int rate);

  // In Hz; 0 and below, as well as 0.49 of the sample rate and above, let everything through.
  // Reached within 10 ms, so that turning it while a note sounds makes no click.
  void set_cutoff(double cutoff);

  // Whatever is on its way to another value arrives at once.
  void settle() {
    warped_.settle();
    share_.settle();
  }

  // In place.
  void process(float* samples, int64_t frames);

  // True when silence in gives silence out and changes nothing: the state has rung out and the
  // cutoff stands still.
  bool is_at_rest() const {
    return first_ == 0.0f && second_ == 0.0f && !warped_.is_moving() && !share_.is_moving();
  }

private:
  struct Coefficients {
    float a1;
    float a2;
    float a3;
  };

  static Coefficients coefficients(float warped);
  float low_passed(float in, const Coefficients& c);
  float process_moving(float in);
  void process_steady(float* samples, int64_t frames);

  int rate_ = 48000;
  Fader warped_; // tan(pi * cutoff / rate)
  Fader share_;  // 0 lets through, 1 filters
  float first_ = 0.0f;
  float second_ = 0.0f;
};

} // namespace kavo::sound
