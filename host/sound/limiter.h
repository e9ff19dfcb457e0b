// A ceiling that nothing exceeds.
#pragma once

#include <cmath>

namespace kavo::sound {

inline constexpr float knee_level = 0.63095734f;    // -4 dBFS: below, samples pass unchanged
inline constexpr float ceiling_level = 0.89125094f; // -1 dBFS: approached, never exceeded

// Bends what lies above the knee towards the ceiling, without a corner.
inline float limited(float sample) {
  const float size = std::abs(sample);
  if (size <= knee_level)
    return sample;
  constexpr float room = ceiling_level - knee_level;
  return std::copysign(ceiling_level - room * room / (room + size - knee_level), sample);
}

} // namespace kavo::sound
