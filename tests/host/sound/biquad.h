// A second-order section in double, transposed direct form II, for measuring.
#pragma once

#include <array>
#include <cmath>
#include <numbers>

namespace kavo::sound::analysis {

class Biquad {
public:
  Biquad(std::array<double, 3> b, std::array<double, 3> a) : b_(b), a_(a) {}

  double process(double in) {
    const double out = b_[0] * in + first_;
    first_ = b_[1] * in - a_[1] * out + second_;
    second_ = b_[2] * in - a_[2] * out;
    return out;
  }

private:
  std::array<double, 3> b_;
  std::array<double, 3> a_;
  double first_ = 0.0;
  double second_ = 0.0;
};

// High- and band-pass after R. Bristow-Johnson's "Cookbook formulae for audio equalizer biquad
// filter coefficients". `frequency` is a fraction of the sample rate.
inline Biquad high_pass(double frequency, double q) {
  const double w = 2.0 * std::numbers::pi * frequency, c = std::cos(w);
  const double alpha = std::sin(w) / (2.0 * q), a0 = 1.0 + alpha;
  return {{(1 + c) / 2 / a0, -(1 + c) / a0, (1 + c) / 2 / a0},
          {1.0, -2 * c / a0, (1 - alpha) / a0}};
}

inline Biquad band_pass(double frequency, double q) {
  const double w = 2.0 * std::numbers::pi * frequency, c = std::cos(w);
  const double alpha = std::sin(w) / (2.0 * q), a0 = 1.0 + alpha;
  return {{alpha / a0, 0.0, -alpha / a0}, {1.0, -2 * c / a0, (1 - alpha) / a0}};
}

} // namespace kavo::sound::analysis
