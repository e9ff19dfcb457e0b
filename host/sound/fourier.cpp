#include "host/sound/fourier.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace kavo::sound {

using Point = std::complex<double>;

FourierTransform::FourierTransform(std::size_t size) : size_(size), turns_(size / 2) {
  const double angle = -2.0 * std::numbers::pi / static_cast<double>(size);
  for (std::size_t k = 0; k < turns_.size(); ++k)
    turns_[k] = std::polar(1.0, angle * static_cast<double>(k));
}

void FourierTransform::reorder(std::vector<Point>& points) const {
  std::size_t reversed = 0;
  for (std::size_t i = 1; i < size_; ++i) {
    std::size_t bit = size_ >> 1;
    for (; reversed & bit; bit >>= 1)
      reversed ^= bit;
    reversed |= bit;
    if (i < reversed)
      std::swap(points[i], points[reversed]);
  }
}

void FourierTransform::transform(std::vector<Point>& points) const {
  reorder(points);
  for (std::size_t half = 1; half < size_; half *= 2) {
    const std::size_t stride = size_ / (2 * half);
    for (std::size_t start = 0; start < size_; start += 2 * half) {
      for (std::size_t k = 0; k < half; ++k) {
        Point& upper = points[start + k];
        Point& lower = points[start + k + half];
        const Point turn = turns_[k * stride];
        // Spelled out: the operator of std::complex looks for infinities on every product.
        const Point turned(lower.real() * turn.real() - lower.imag() * turn.imag(),
                           lower.real() * turn.imag() + lower.imag() * turn.real());
        lower = upper - turned;
        upper += turned;
      }
    }
  }
}

} // namespace kavo::sound
