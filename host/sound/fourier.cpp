#include "host/sound/fourier.h"

#include <algorithm>
#include <bit>
#include <utility>

#include "host/sound/elementary.h"

namespace kavo::sound {

using Point = std::complex<double>;

namespace {

Point turned_by(double turns) {
  return {cosine_of_turns(turns), sine_of_turns(turns)};
}

} // namespace

FourierTransform::FourierTransform(size_t size) : size_(size), turns_(size) {
  const size_t last = size / 2;
  for (size_t k = 0; k < last; ++k)
    turns_[last + k] = turned_by(-static_cast<double>(k) / static_cast<double>(size));
  for (size_t half = last / 2; half >= 1; half /= 2)
    for (size_t k = 0; k < half; ++k)
      turns_[half + k] = turns_[2 * (half + k)];
}

namespace {

// Two transforms of `half` points become one of twice as many.
void join(Point* upper, Point* lower, const Point* turns, size_t half) {
  for (size_t k = 0; k < half; ++k) {
    // Spelled out: the operator of std::complex looks for infinities on every product.
    const Point turned(lower[k].real() * turns[k].real() - lower[k].imag() * turns[k].imag(),
                       lower[k].real() * turns[k].imag() + lower[k].imag() * turns[k].real());
    lower[k] = upper[k] - turned;
    upper[k] += turned;
  }
}

} // namespace

void FourierTransform::reorder(std::vector<Point>& points) const {
  size_t reversed = 0;
  for (size_t i = 1; i < size_; ++i) {
    size_t bit = size_ >> 1;
    for (; reversed & bit; bit >>= 1)
      reversed ^= bit;
    reversed |= bit;
    if (i < reversed)
      std::swap(points[i], points[reversed]);
  }
}

void FourierTransform::transform(std::vector<Point>& points, size_t used) const {
  reorder(points);
  // The points in use now stand `spread` apart. Joining one with a zero gives it twice, so that the
  // passes up to there do nothing but repeat it.
  const size_t spread = size_ / std::bit_ceil(used);
  for (size_t start = 0; start < size_; start += spread)
    std::fill_n(&points[start], spread, Point(points[start]));
  for (size_t half = spread; half < size_; half *= 2)
    for (size_t start = 0; start < size_; start += 2 * half)
      join(&points[start], &points[start + half], &turns_[half], half);
}

} // namespace kavo::sound
