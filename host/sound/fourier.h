// The discrete Fourier transform of power-of-two lengths, for making wave tables (and, in the
// tests, for measuring what comes out).
#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace kavo::sound {

// Radix-2, decimation in time (Cooley and Tukey 1965).
class FourierTransform {
public:
  // `size` is a power of two.
  explicit FourierTransform(size_t size);

  // In place: X[k] = sum over n of x[n] * exp(-2 pi i k n / size). `points` holds `size` points.
  void transform(std::vector<std::complex<double>>& points) const { transform(points, size_); }

  // The same where all points from the `used`th on are zero (1 <= used <= size), which takes less
  // time and gives the same result to the bit.
  void transform(std::vector<std::complex<double>>& points, size_t used) const;

private:
  void reorder(std::vector<std::complex<double>>& points) const;

  size_t size_;
  // For the pass that joins transforms of `half` points: exp(-pi i k / half) at half + k. Every
  // pass has its own, one after the other: picked out of one table in strides, as a transform of
  // 32768 points takes them in its first passes, each would cost a cache line.
  std::vector<std::complex<double>> turns_;
};

} // namespace kavo::sound
