#include "host/sound/fraction.h"

#include <limits>
#include <numeric>

namespace kavo::sound {

namespace {

int128 common_divisor(int128 a, int128 b) {
  constexpr int128 word = std::numeric_limits<int64_t>::max();
  while (a > word || b > word) {
    if (b == 0)
      return a;
    const int128 remainder = a % b;
    a = b;
    b = remainder;
  }
  return std::gcd(static_cast<int64_t>(a), static_cast<int64_t>(b));
}

} // namespace

Fraction Fraction::reduced(int128 numerator, int128 denominator) {
  if (denominator == 0)
    throw FractionOverflow();
  if (denominator < 0) {
    numerator = -numerator;
    denominator = -denominator;
  }
  const int128 divisor = common_divisor(numerator < 0 ? -numerator : numerator, denominator);
  numerator /= divisor;
  denominator /= divisor;
  if (denominator > largest_denominator || numerator > largest_numerator ||
      numerator < -int128{largest_numerator})
    throw FractionOverflow();
  Fraction result;
  result.numerator_ = static_cast<int64_t>(numerator);
  result.denominator_ = static_cast<int64_t>(denominator);
  return result;
}

} // namespace kavo::sound
