#include "host/sound/elementary.h"

#include <cmath>
#include <numbers>

namespace kavo::sound {

namespace {

// sin(2 pi t) for -1/8 <= t <= 1/8: the series of Taylor, which ends below the last place.
double sine_series(double turns) {
  const double x = 2.0 * std::numbers::pi * turns;
  double sum = 0.0;
  for (int n = 19; n >= 1; n -= 2)
    sum = 1.0 - sum * x * x / ((n + 1) * (n + 2));
  return x * sum;
}

double cosine_series(double turns) {
  const double x = 2.0 * std::numbers::pi * turns;
  double sum = 0.0;
  for (int n = 20; n >= 0; n -= 2)
    sum = 1.0 - sum * x * x / ((n + 1) * (n + 2));
  return sum;
}

} // namespace

// 2^n * e^r with -0.35 <= r <= 0.35.
double exponential(double x) {
  const double n = std::floor(x / std::numbers::ln2 + 0.5);
  const double r = x - n * std::numbers::ln2;
  double sum = 1.0;
  for (int k = 16; k >= 1; --k)
    sum = 1.0 + sum * r / k;
  return std::ldexp(sum, static_cast<int>(n));
}

// n ln 2 + 2 artanh((m - 1) / (m + 1)) with x = 2^n m and m from 0.7 to 1.4.
double logarithm(double x) {
  int n = 0;
  double m = std::frexp(x, &n);
  if (m < std::numbers::sqrt2 / 2) {
    m *= 2.0;
    --n;
  }
  const double s = (m - 1.0) / (m + 1.0);
  double sum = 0.0;
  for (int k = 27; k >= 1; k -= 2)
    sum = 1.0 / k + sum * s * s;
  return n * std::numbers::ln2 + 2.0 * s * sum;
}

double sine_of_turns(double turns) {
  const double quarters = std::floor(4.0 * turns + 0.5);
  const double rest = turns - quarters / 4.0;
  switch (static_cast<int>(quarters) & 3) {
  case 0:
    return sine_series(rest);
  case 1:
    return cosine_series(rest);
  case 2:
    return -sine_series(rest);
  default:
    return -cosine_series(rest);
  }
}

double cosine_of_turns(double turns) {
  return sine_of_turns(turns + 0.25);
}

} // namespace kavo::sound
