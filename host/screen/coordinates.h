// Numbers from a program as pixels.
#pragma once

#include <cmath>
#include <cstdint>

namespace kavo::host {

// Toward zero. NaN is 0; what lies beyond a billion, infinities included, stays there.
inline int to_pixel(double value) {
  constexpr double farthest = 1e9;
  if (std::fabs(value) <= farthest)
    return static_cast<int>(value);
  if (std::isnan(value))
    return 0;
  return static_cast<int>(value > 0 ? farthest : -farthest);
}

// 0 to 255, toward zero; NaN is 0.
inline uint32_t to_colour_component(double value) {
  if (!(value > 0))
    return 0;
  return value < 255 ? static_cast<uint32_t>(value) : 255;
}

} // namespace kavo::host
