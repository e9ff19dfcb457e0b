// What is alive in the pools of effects and stars, as values that tests can compare.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace kavo::test {

using Popup = std::array<double, 3>;  // x, y, value
using Streak = std::array<double, 3>; // x, top, bottom
using Star = std::array<double, 2>;   // row, column

struct Particle {
  double x, y, vx, vy, life;
  std::array<double, 3> color;
};

// The live entries in slot order.
std::vector<Popup> popups();
std::vector<Streak> streaks();
std::vector<Particle> particles();
std::vector<Star> stars();

// The live particles of this colour.
std::vector<Particle> particles_of(const std::array<double, 3>& color);

void put_star(int64_t slot, int64_t row, int64_t column);

// Makes every slot of the particle pool live, with a life that outlasts any test.
void fill_particle_pool();

} // namespace kavo::test
