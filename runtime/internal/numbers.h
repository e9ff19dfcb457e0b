// Doubles as integers without undefined behaviour.
#pragma once

#include <cstdint>

namespace qor {

// Toward zero; saturating at the ends of the range, 0 for NaN.
inline int64_t truncate_to_int64(double x) {
  constexpr double limit = 9223372036854775808.0; // 2^63
  if (x >= limit)
    return INT64_MAX;
  if (x < -limit)
    return INT64_MIN;
  return x == x ? static_cast<int64_t>(x) : 0;
}

} // namespace qor
