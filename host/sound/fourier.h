// The discrete Fourier transform of power-of-two lengths, for making wave tables (and, in the
// tests, for measuring what comes out).
#ifndef KAVO_SOUND_FOURIER_H
#define KAVO_SOUND_FOURIER_H

#include <complex>
#include <cstddef>
#include <vector>

namespace kavo::sound {

// Radix-2, decimation in time (Cooley and Tukey 1965).
class FourierTransform {
public:
  // `size` is a power of two.
  explicit FourierTransform(std::size_t size);

  // In place: X[k] = sum over n of x[n] * exp(-2 pi i k n / size). `points` holds `size` points.
  void transform(std::vector<std::complex<double>>& points) const;

private:
  void reorder(std::vector<std::complex<double>>& points) const;

  std::size_t size_;
  std::vector<std::complex<double>> turns_; // exp(-2 pi i k / size), half a circle of them
};

} // namespace kavo::sound

#endif
